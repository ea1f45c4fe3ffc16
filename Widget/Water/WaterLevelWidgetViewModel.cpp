#include "Widget/Water/WaterLevelWidgetViewModel.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace qrv::widget {

namespace {

// The scale's step per unit, as whole units (the marks' values) and as floats
// (the amount arithmetic); equal values, and equal to the log increments.
constexpr std::array<std::int64_t, 3> kStepByUnit{8, 250, 2};
constexpr std::array<float, 3> kFloatStepByUnit{8.0f, 250.0f, 2.0f};

// Truncation toward zero of an amount that must be a whole number of units.
std::int64_t truncatedOrDie(float value) {
    // The open range of floats whose truncation fits a 64-bit integer.
    if (!std::isfinite(value) || !(value > -9223373136366403584.0f) || !(value < 9223372036854775808.0f)) {
        std::fprintf(stderr, "fatal error: water amount %g cannot be converted to a whole number of units\n",
                     static_cast<double>(value));
        std::abort();
    }
    return static_cast<std::int64_t>(value);
}

}  // namespace

std::int64_t waterLevelStep(WaterWidgetUnit unit) { return kStepByUnit[position(unit)]; }

WaterLevelWidgetViewModel::WaterLevelWidgetViewModel(float waterAmount, WaterWidgetUnit unit)
    : waterAmount_(waterAmount), unit_(unit) {}

std::int64_t WaterLevelWidgetViewModel::maximumValue() const {
    const float step = kFloatStepByUnit[position(unit_)];
    float top = 7 * step;
    if (waterAmount_ > top) {
        // An amount on a step is the top mark itself; otherwise round up to
        // the next step so the surface stays inside the scale.
        top = std::fmod(waterAmount_, step) == 0 ? waterAmount_ : step * std::ceil(waterAmount_ / step);
    }
    return truncatedOrDie(top);
}

void WaterLevelWidgetViewModel::buildRows() {
    const std::int64_t step = kStepByUnit[position(unit_)];
    std::int64_t value = maximumValue();
    // Always seven marks, whatever numberOfRows says: the glass is drawn for
    // seven, the lowest one a long mark one step above the bottom.
    for (int k = 6; k >= 0; --k) {
        rows_.push_back(
            WaterLevelRow{.value = value,
                          .type = k % 2 == 0 ? WaterLevelRowType::large : WaterLevelRowType::short_,
                          .yPosition = 0});
        value -= step;
        if (value < 0) break;
    }
}

void WaterLevelWidgetViewModel::updateRowPosition(std::int64_t value, double yPosition) {
    const auto row = std::ranges::find(rows_, value, &WaterLevelRow::value);
    if (row != rows_.end()) row->yPosition = yPosition;
}

double WaterLevelWidgetViewModel::surfacePosition() const {
    const float amount = waterAmount_;
    const auto asFloat = [](const WaterLevelRow& row) { return static_cast<float>(row.value); };

    // On a mark: exactly there.
    for (const auto& row : rows_)
        if (asFloat(row) == amount) return row.yPosition;

    // The rows run from the top down, so the nearest mark above the amount is
    // the last one greater than it and the nearest below the first one less.
    const WaterLevelRow* upper = nullptr;
    const WaterLevelRow* lower = nullptr;
    for (const auto& row : rows_) {
        if (asFloat(row) > amount) upper = &row;
        if (!lower && asFloat(row) < amount) lower = &row;
    }

    // Above every mark (or not a number): nothing is drawn.
    if (!upper) return totalHeight_;

    const double upperValue = static_cast<double>(upper->value);
    const double value = amount;
    if (!lower) {
        // Below the lowest mark: between that mark and the bottom, which
        // stands for 0.
        if (!(amount < asFloat(*upper))) return upper->yPosition;
        if (amount <= 0) return totalHeight_;
        return upper->yPosition + (totalHeight_ - upper->yPosition) * (upperValue - value) / upperValue;
    }
    if (!(amount < asFloat(*upper))) return upper->yPosition;
    if (!(asFloat(*lower) < amount)) return lower->yPosition;
    const double lowerValue = static_cast<double>(lower->value);
    return upper->yPosition +
           (lower->yPosition - upper->yPosition) * (upperValue - value) / (upperValue - lowerValue);
}

void WaterLevelWidgetViewModel::updateWaterHeight() {
    const double height = totalHeight_ - surfacePosition();
    // Never below the bottom and never above the rim, whatever the
    // measurements say.
    waterHeight_.set(std::max(0.0, std::min(height, totalHeight_)));
}

}  // namespace qrv::widget
