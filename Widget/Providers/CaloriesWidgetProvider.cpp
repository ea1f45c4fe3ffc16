#include "Widget/Providers/CaloriesWidgetProvider.hpp"

#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {

CaloriesWidgetProvider::CaloriesWidgetProvider(std::shared_ptr<WidgetDataCacheReader> reader,
                                               WidgetBackgroundFetchAnalytics analytics,
                                               std::function<Entry()> placeholder)
    : reader_(std::move(reader)),
      analytics_(std::move(analytics)),
      placeholder_(placeholder ? std::move(placeholder) : samplePlaceholder<Entry>(nullptr)) {}

CaloriesWidgetProvider CaloriesWidgetProvider::make(const WidgetDataCacheReaderEnvironment& environment) {
    auto reader = WidgetDataCacheReader::make(environment);
    reader->registerStrategy(
        dataType, std::make_shared<CaloriesDataReadStrategy>(std::string(WidgetStoreKeys::caloriesData),
                                                             environment.calendar, environment.clock));
    return CaloriesWidgetProvider(std::move(reader),
                                  WidgetBackgroundFetchAnalytics(environment.store, environment.clock),
                                  samplePlaceholder<Entry>(environment.clock));
}

CaloriesWidgetProvider::Entry CaloriesWidgetProvider::placeholder(
    const platform::TimelineProviderContext&) const {
    return placeholder_();
}

void CaloriesWidgetProvider::getSnapshot(const platform::TimelineProviderContext& context,
                                         SnapshotCompletion completion) const {
    reader_->read(dataType, [context, completion = std::move(completion),
                             analytics = analytics_](AnyWidgetDataCacheEntry delivered) {
        const auto* entry = std::get_if<Entry>(&delivered);
        if (!entry) return;  // another record type: no answer, no event
        completion(*entry);
        analytics.recordFetch(widgetName, fetchEventSize(context.family));
    });
}

void CaloriesWidgetProvider::getTimeline(const platform::TimelineProviderContext& context,
                                         TimelineCompletion completion) const {
    reader_->read(dataType, [context, completion = std::move(completion), reader = reader_,
                             analytics = analytics_](AnyWidgetDataCacheEntry delivered) {
        const auto* entry = std::get_if<Entry>(&delivered);
        if (!entry) return;
        std::vector<Entry> entries{*entry};
        // From the next midnight on, the widget shows the new day's reset figures
        // by itself and then asks for a fresh timeline.
        if (const auto next = reader->nextDayEntry(delivered, dataType))
            if (const auto* nextEntry = std::get_if<Entry>(&*next)) entries.push_back(*nextEntry);
        completion(platform::Timeline<Entry>(std::move(entries), platform::TimelineReloadPolicy::atEnd()));
        analytics.recordFetch(widgetName, fetchEventSize(context.family));
    });
}

}  // namespace qrv::widget
