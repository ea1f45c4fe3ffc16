#pragma once
// Amounts of water as the widget shows and adds them. Both go through the unit
// library and never fail: without it (or when it answers nothing) an amount is
// shown as its plain number and unit, and a logged amount is added unconverted
// rather than dropped.
#include <string>
#include <vector>

#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::widget {

// "250 ml", "8.0 fl oz", "2.0 cups" from the unit library (whole millilitres,
// the unit's default decimal places otherwise); "250.0 ml", "2.0 cups" when the
// library cannot format it.
std::string formattedAmount(WaterWidgetUnit unit, float amount);

// The sum of the records' amounts, each converted into `unit` (records already
// in `unit` are added as they are). Summed in single precision, in order.
float totalAmount(const std::vector<InteractiveWaterData>& records, WaterWidgetUnit unit);

}  // namespace qrv::widget
