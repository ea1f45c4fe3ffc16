#pragma once
// The macronutrient widget's timeline provider. It decodes nothing itself: it asks its
// reader for the record the main app stored, hands it to the widget host as a
// snapshot, or as a timeline that switches to the day's reset figures at the
// next local midnight, and then records one fetch event.
#include <functional>
#include <memory>
#include <string_view>

#include "Platform/timeline/TimelineProvider.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WidgetDataCacheReader.hpp"
#include "Widget/Providers/WidgetBackgroundFetchAnalytics.hpp"

namespace qrv::widget {

class MacronutrientsWidgetProvider final : public platform::TimelineProvider<MacronutrientsDataEntry> {
  public:
    static constexpr WidgetDataCacheType dataType = WidgetDataCacheType::macronutrients;
    static constexpr std::string_view widgetName = "widget_macros";

    // `reader` should have the macronutrient strategy registered; a reader without it
    // prints its line and never calls back, and neither does the provider.
    // The placeholder is the record's shared sample unless `placeholder` says otherwise.
    MacronutrientsWidgetProvider(std::shared_ptr<WidgetDataCacheReader> reader,
                                 WidgetBackgroundFetchAnalytics analytics,
                                 std::function<Entry()> placeholder = nullptr);

    // As the widget makes it: a fresh reader holding only the macronutrient strategy
    // under "MacronutrientsData", and analytics on the same store and clock.
    static MacronutrientsWidgetProvider make(
        const WidgetDataCacheReaderEnvironment& environment = WidgetDataCacheReaderEnvironment::defaults());

    // The shared sample entry, the same on every call; neither the context nor
    // the cache is consulted.
    Entry placeholder(const platform::TimelineProviderContext& context) const override;
    // The stored entry, then one fetch event. Never called back when the reader
    // finds nothing current.
    void getSnapshot(const platform::TimelineProviderContext& context,
                     SnapshotCompletion completion) const override;
    // The stored entry and its next-day copy, reload at end, then one fetch event.
    void getTimeline(const platform::TimelineProviderContext& context,
                     TimelineCompletion completion) const override;

    const std::shared_ptr<WidgetDataCacheReader>& reader() const { return reader_; }

  private:
    std::shared_ptr<WidgetDataCacheReader> reader_;
    WidgetBackgroundFetchAnalytics analytics_;
    std::function<Entry()> placeholder_;
};

}  // namespace qrv::widget
