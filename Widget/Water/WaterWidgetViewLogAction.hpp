#pragma once
// What the water widget's log button runs: the log-water intent by name, with
// the unit's raw text and one increment written as a whole number ("ml",
// "250"). Kept apart from the views so that the intent's own header (and the
// intent layer's types) stay out of the drawing code.
#include <string>
#include <vector>

#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::widget {

struct WaterLogAction {
    std::string intentName;
    // Unit first, then amount: the order the intent is built in.
    std::vector<std::string> parameters;
    friend bool operator==(const WaterLogAction&, const WaterLogAction&) = default;
};

WaterLogAction waterLogAction(WaterWidgetUnit unit);

}  // namespace qrv::widget
