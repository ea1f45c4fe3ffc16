#include "Widget/Widgets/QRVWidgets.hpp"

#include "Widget/Widgets/CaloriesConsumedWidget.hpp"
#include "Widget/Widgets/MacronutrientsWidget.hpp"
#include "Widget/Widgets/WaterWidget.hpp"

namespace qrv::widget {

std::vector<WidgetConfiguration> QRVWidgets::body(int systemVersion) const {
    std::vector<WidgetConfiguration> widgets;
    // A widget whose body is an empty configuration is simply not offered.
    for (auto configuration : {WaterWidget{}.body(systemVersion), CaloriesConsumedWidget{}.body(systemVersion),
                               MacronutrientsWidget{}.body(systemVersion)})
        if (configuration) widgets.push_back(std::move(*configuration));
    return widgets;
}

}  // namespace qrv::widget
