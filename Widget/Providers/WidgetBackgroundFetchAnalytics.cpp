#include "Widget/Providers/WidgetBackgroundFetchAnalytics.hpp"

#include <algorithm>
#include <cstdio>

#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {

WidgetBackgroundFetchAnalytics::WidgetBackgroundFetchAnalytics(std::shared_ptr<platform::UserDefaults> store,
                                                               std::shared_ptr<const platform::Clock> clock)
    : store_(std::move(store)), clock_(clock ? std::move(clock) : systemClock()) {}

void WidgetBackgroundFetchAnalytics::recordFetch(std::string_view widgetName,
                                                 std::string_view widgetSize) const {
    using Value = platform::PropertyListValue;
    try {
        const WidgetFetchEvent event{std::string(widgetName), std::string(widgetSize), clock_->now()};
        Value::Data blob = event.encode();
        const auto store = store_ ? store_ : WidgetSettings::defaults();
        store->update(
            WidgetStoreKeys::widgetEvents, [&](std::optional<Value> stored) -> std::optional<Value> {
                Value::Array events;
                if (stored) {
                    if (const auto* array = stored->arrayValue();
                        array && std::all_of(array->begin(), array->end(), [](const Value& element) {
                            return element.dataValue() != nullptr;
                        })) {
                        events = *array;
                    }
                }
                events.emplace_back(blob);
                return Value(std::move(events));
            });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "could not record the widget fetch: %s\n", error.what());
    }
}

}  // namespace qrv::widget
