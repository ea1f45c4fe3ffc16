#pragma once
// The macronutrient widget's timeline provider: the app's stored macronutrient
// record, as a snapshot or as a timeline with the next day's reset figures.
#include <string_view>

#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WidgetDataCacheReadStrategy.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Providers/StoredRecordWidgetProvider.hpp"

namespace qrv::widget {

class MacronutrientsWidgetProvider final
    : public StoredRecordWidgetProvider<MacronutrientsWidgetProvider, MacronutrientsDataEntry,
                                        MacronutrientsDataReadStrategy> {
  public:
    static constexpr WidgetDataCacheType dataType = WidgetDataCacheType::macronutrients;
    static constexpr std::string_view widgetName = "widget_macros";
    static constexpr std::string_view storeKey = WidgetStoreKeys::macronutrientsData;

    using StoredRecordWidgetProvider::StoredRecordWidgetProvider;
};

}  // namespace qrv::widget
