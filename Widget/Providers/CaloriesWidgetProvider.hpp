#pragma once
// The calories widget's timeline provider: the app's stored calories record,
// as a snapshot or as a timeline with the next day's reset figures.
#include <string_view>

#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/WidgetDataCacheReadStrategy.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Providers/StoredRecordWidgetProvider.hpp"

namespace qrv::widget {

class CaloriesWidgetProvider final
    : public StoredRecordWidgetProvider<CaloriesWidgetProvider, CaloriesConsumedDataEntry,
                                        CaloriesDataReadStrategy> {
  public:
    static constexpr WidgetDataCacheType dataType = WidgetDataCacheType::calories;
    static constexpr std::string_view widgetName = "widget_calories";
    static constexpr std::string_view storeKey = WidgetStoreKeys::caloriesData;

    using StoredRecordWidgetProvider::StoredRecordWidgetProvider;
};

}  // namespace qrv::widget
