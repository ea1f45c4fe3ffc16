#include "Widget/Water/WaterWidgetViewLogAction.hpp"

#include <cmath>

#include "Widget/Water/WaterWidgetIntent.hpp"

namespace qrv::widget {

WaterLogAction waterLogAction(WaterWidgetUnit unit) {
    // The increments are whole units (8 oz, 250 ml, 2 cups): written without
    // a fraction, as the intent's amount text.
    const auto amount = static_cast<long long>(std::lround(increment(unit)));
    return WaterLogAction{std::string(WaterWidgetIntent::name),
                          {std::string(rawValue(unit)), std::to_string(amount)}};
}

}  // namespace qrv::widget
