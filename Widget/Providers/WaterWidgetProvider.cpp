#include "Widget/Providers/WaterWidgetProvider.hpp"

#include <any>

#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Water/WaterAmounts.hpp"

namespace qrv::widget {

WaterWidgetProvider::WaterWidgetProvider(
    std::shared_ptr<WidgetDataCacheReader> reader,
    std::shared_ptr<const InteractiveWidgetDataCacheReaderProtocol> interactiveDataReader,
    WidgetDataCacheReaderEnvironment environment)
    : state_(std::make_shared<const State>(
          State{std::move(reader), std::move(interactiveDataReader), std::move(environment)})) {}

WaterWidgetProvider WaterWidgetProvider::make(const WidgetDataCacheReaderEnvironment& environment) {
    auto reader = WidgetDataCacheReader::make(environment);
    reader->registerStrategy(
        dataType, std::make_shared<WaterDataReadStrategy>(std::string(WidgetStoreKeys::waterEntryData),
                                                          environment.calendar, environment.clock));
    std::shared_ptr<const InteractiveWidgetDataCacheReaderProtocol> interactive;
    if (environment.store) {
        // Read the widget's own log from the same store as the app's record.
        interactive = std::make_shared<InteractiveWidgetDataCacheReader>(
            InteractiveWidgetDataCacheReader::shared().strategies(), environment.store);
    } else {
        // The process-wide reader, referred to without owning it.
        interactive = std::shared_ptr<const InteractiveWidgetDataCacheReaderProtocol>(
            std::shared_ptr<const InteractiveWidgetDataCacheReaderProtocol>{},
            &InteractiveWidgetDataCacheReader::shared());
    }
    return WaterWidgetProvider(std::move(reader), std::move(interactive), environment);
}

WaterWidgetProvider::Entry WaterWidgetProvider::placeholder(const platform::TimelineProviderContext&) const {
    return WaterDataEntry::sample();
}

void WaterWidgetProvider::getSnapshot(const platform::TimelineProviderContext&,
                                      SnapshotCompletion completion) const {
    state_->environment.queues.background->async([state = state_, completion = std::move(completion)] {
        completion(state->todayEntry(state->environment.now()));
    });
}

void WaterWidgetProvider::getTimeline(const platform::TimelineProviderContext&,
                                      TimelineCompletion completion) const {
    state_->environment.queues.background->async(
        [state = state_, completion = std::move(completion)] { completion(state->timeline()); });
}

WaterDataEntry WaterWidgetProvider::todayEntry() const {
    return state_->todayEntry(state_->environment.now());
}

platform::Timeline<WaterDataEntry> WaterWidgetProvider::timeline() const { return state_->timeline(); }

WaterDataEntry WaterWidgetProvider::State::todayEntry(platform::Date now) const {
    const auto stored = reader->read(dataType);
    const auto* entry = stored ? std::get_if<WaterDataEntry>(&*stored) : nullptr;
    if (entry == nullptr) return WaterDataEntry{now, true, 0, WaterWidgetUnit::oz};
    if (environment.calendar.isDateInSameDayAs(entry->date, now)) return *entry;
    // Daily reset: yesterday's total is never shown today. The fresh entry counts
    // as logged in even when the stale one was not, so an old logged-out record
    // does not hold the widget in its logged-out look.
    return WaterDataEntry{now, true, 0, entry->waterUnit};
}

platform::Timeline<WaterDataEntry> WaterWidgetProvider::State::timeline() const {
    const platform::Date now = environment.now();
    WaterDataEntry entry = todayEntry(now);
    const auto logged = interactiveDataReader->read(InteractiveWidgetDataType::water);
    if (const auto* records = std::any_cast<InteractiveWaterDataList>(&logged)) {
        InteractiveWaterDataList today;
        for (const auto& record : *records)
            if (environment.calendar.isDateInSameDayAs(record.date, now)) today.push_back(record);
        entry.waterValue += totalAmount(today, entry.waterUnit);
    }
    std::vector<WaterDataEntry> entries{entry};
    if (const auto next = reader->nextDayEntry(AnyWidgetDataCacheEntry(entry), dataType)) {
        if (const auto* nextEntry = std::get_if<WaterDataEntry>(&*next)) entries.push_back(*nextEntry);
    }
    return platform::Timeline<WaterDataEntry>(std::move(entries), platform::TimelineReloadPolicy::atEnd());
}

}  // namespace qrv::widget
