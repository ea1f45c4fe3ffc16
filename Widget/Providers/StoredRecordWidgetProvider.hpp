#pragma once
// What the calories and macronutrient widgets' providers share: they decode
// nothing themselves. Each asks its reader for the record the main app stored,
// hands it to the widget host as a snapshot, or as a timeline that switches to
// the day's reset figures at the next local midnight, and then records one
// fetch event. A widget's provider names its record, strategy, store key and
// widget name; everything else is here.
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Platform/timeline/TimelineProvider.hpp"
#include "Widget/Cache/WidgetDataCacheReader.hpp"
#include "Widget/Providers/WidgetBackgroundFetchAnalytics.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"

namespace qrv::widget {

// `Widget` supplies `dataType`, `widgetName` and `storeKey`; `Strategy` is the
// read strategy that decodes `EntryType` under that key.
template <class Widget, class EntryType, class Strategy>
class StoredRecordWidgetProvider : public platform::TimelineProvider<EntryType> {
  public:
    using Entry = EntryType;
    using typename platform::TimelineProvider<EntryType>::SnapshotCompletion;
    using typename platform::TimelineProvider<EntryType>::TimelineCompletion;

    // `reader` should have the widget's strategy registered; a reader without it
    // prints its line and never calls back, and neither does the provider.
    // The placeholder is the record's shared sample unless `placeholder` says otherwise.
    StoredRecordWidgetProvider(std::shared_ptr<WidgetDataCacheReader> reader,
                               WidgetBackgroundFetchAnalytics analytics,
                               std::function<Entry()> placeholder = nullptr)
        : reader_(std::move(reader)),
          analytics_(std::move(analytics)),
          placeholder_(placeholder ? std::move(placeholder) : samplePlaceholder<Entry>(nullptr)) {}

    // As the widget makes it: a fresh reader holding only this widget's strategy
    // under its store key, and analytics on the same store and clock.
    static Widget make(
        const WidgetDataCacheReaderEnvironment& environment = WidgetDataCacheReaderEnvironment::defaults()) {
        auto reader = WidgetDataCacheReader::make(environment);
        reader->registerStrategy(
            Widget::dataType, std::make_shared<Strategy>(std::string(Widget::storeKey), environment.calendar,
                                                         environment.clock));
        return Widget(std::move(reader), WidgetBackgroundFetchAnalytics(environment.store, environment.clock),
                      samplePlaceholder<Entry>(environment.clock));
    }

    // The shared sample entry, the same on every call; neither the context nor
    // the cache is consulted.
    Entry placeholder(const platform::TimelineProviderContext&) const override { return placeholder_(); }

    // The stored entry, then one fetch event. Never called back when the reader
    // finds nothing current.
    void getSnapshot(const platform::TimelineProviderContext& context,
                     SnapshotCompletion completion) const override {
        reader_->read(Widget::dataType, [context, completion = std::move(completion),
                                         analytics = analytics_](AnyWidgetDataCacheEntry delivered) {
            const auto* entry = std::get_if<Entry>(&delivered);
            if (!entry) return;  // another record type: no answer, no event
            completion(*entry);
            analytics.recordFetch(Widget::widgetName, fetchEventSize(context.family));
        });
    }

    // The stored entry and its next-day copy, reload at end, then one fetch event.
    void getTimeline(const platform::TimelineProviderContext& context,
                     TimelineCompletion completion) const override {
        reader_->read(Widget::dataType, [context, completion = std::move(completion), reader = reader_,
                                         analytics = analytics_](AnyWidgetDataCacheEntry delivered) {
            const auto* entry = std::get_if<Entry>(&delivered);
            if (!entry) return;
            std::vector<Entry> entries{*entry};
            // From the next midnight on, the widget shows the new day's reset figures
            // by itself and then asks for a fresh timeline.
            if (const auto next = reader->nextDayEntry(delivered, Widget::dataType))
                if (const auto* nextEntry = std::get_if<Entry>(&*next)) entries.push_back(*nextEntry);
            completion(
                platform::Timeline<Entry>(std::move(entries), platform::TimelineReloadPolicy::atEnd()));
            analytics.recordFetch(Widget::widgetName, fetchEventSize(context.family));
        });
    }

    const std::shared_ptr<WidgetDataCacheReader>& reader() const { return reader_; }

  private:
    std::shared_ptr<WidgetDataCacheReader> reader_;
    WidgetBackgroundFetchAnalytics analytics_;
    std::function<Entry()> placeholder_;
};

}  // namespace qrv::widget
