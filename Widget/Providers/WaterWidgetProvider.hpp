#pragma once
// The water widget's timeline provider. It shows the main app's water figure for
// today plus what the user logged on the widget itself today, converted into the
// figure's unit, and rolls over to zero at the next local midnight. Each snapshot
// and timeline request runs as its own task on the background queue and answers
// from there; no fetch analytics are recorded for water.
#include <memory>

#include "Platform/timeline/TimelineProvider.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheReader.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Cache/WidgetDataCacheReader.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"

namespace qrv::widget {

class WaterWidgetProvider final : public platform::TimelineProvider<WaterDataEntry> {
  public:
    static constexpr WidgetDataCacheType dataType = WidgetDataCacheType::water;

    // `reader` should have the water strategy registered. The environment gives
    // the calendar and clock that say what "today" is and the queue the tasks run on.
    WaterWidgetProvider(std::shared_ptr<WidgetDataCacheReader> reader,
                        std::shared_ptr<const InteractiveWidgetDataCacheReaderProtocol> interactiveDataReader,
                        WidgetDataCacheReaderEnvironment environment);

    // As the widget makes it: a fresh reader holding only the water strategy
    // under "WaterEntryData", and the shared interactive reader (or one on the
    // environment's store when it names one).
    static WaterWidgetProvider make(
        const WidgetDataCacheReaderEnvironment& environment = WidgetDataCacheReaderEnvironment::defaults());

    // A copy of the shared water sample entry.
    Entry placeholder(const platform::TimelineProviderContext& context) const override;
    // Today's entry as the app stored it, without water logged on the widget.
    void getSnapshot(const platform::TimelineProviderContext& context,
                     SnapshotCompletion completion) const override;
    // Today's entry with today's widget-logged water added, then its copy reset
    // to zero at the next local midnight; reload policy "at end".
    void getTimeline(const platform::TimelineProviderContext& context,
                     TimelineCompletion completion) const override;

    // The work of the two tasks, done on the calling thread.
    WaterDataEntry todayEntry() const;
    platform::Timeline<WaterDataEntry> timeline() const;

    const std::shared_ptr<WidgetDataCacheReader>& reader() const { return state_->reader; }

  private:
    // Shared with the tasks, so a request still finishes if the provider goes away.
    struct State {
        std::shared_ptr<WidgetDataCacheReader> reader;
        std::shared_ptr<const InteractiveWidgetDataCacheReaderProtocol> interactiveDataReader;
        WidgetDataCacheReaderEnvironment environment;

        WaterDataEntry todayEntry(platform::Date now) const;
        platform::Timeline<WaterDataEntry> timeline() const;
    };
    std::shared_ptr<const State> state_;
};

}  // namespace qrv::widget
