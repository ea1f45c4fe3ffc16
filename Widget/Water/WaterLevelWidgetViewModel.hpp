#pragma once
// The model of the medium water widget's glass: a scale of seven marks from the
// top of the scale down to one step above empty (the bottom of the glass stands
// for 0), and the height of the water column behind them. The view measures
// the glass and its marks, reports the positions back, asks for the water
// height and redraws whenever the published height changes, so the model is a
// reference type: the view observes this one object.
#include <cstdint>
#include <vector>

#include "Widget/Water/WaterLevelPublished.hpp"
#include "Widget/Water/WaterLevelRow.hpp"
#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::widget {

// The distance between two marks, in the unit: the same amounts as one tap of
// the log button.
std::int64_t waterLevelStep(WaterWidgetUnit unit);

class WaterLevelWidgetViewModel {
  public:
    static constexpr int kNumberOfRows = 7;

    // Rows stay empty until buildRows().
    WaterLevelWidgetViewModel(float waterAmount, WaterWidgetUnit unit);
    WaterLevelWidgetViewModel(const WaterLevelWidgetViewModel&) = delete;
    WaterLevelWidgetViewModel& operator=(const WaterLevelWidgetViewModel&) = delete;

    float waterAmount() const { return waterAmount_; }
    WaterWidgetUnit unit() const { return unit_; }
    int numberOfRows() const { return numberOfRows_; }
    const std::vector<WaterLevelRow>& rows() const { return rows_; }

    // The glass's measured height in points; 0 until the view measured it.
    double totalHeight() const { return totalHeight_; }
    void setTotalHeight(double height) { totalHeight_ = height; }

    // The value of the top mark: seven steps, or more when the amount is
    // above that (the amount itself when it lies on a step, else the next
    // step above it). Stops the program for an amount too large to count in
    // whole units (never the case for a day's water).
    std::int64_t maximumValue() const;

    // Appends the seven marks, top first, alternating long and short and
    // ending with a long mark.
    void buildRows();

    // The view's measurement of the mark standing for `value`: the first such
    // row takes the position; an unknown value changes nothing.
    void updateRowPosition(std::int64_t value, double yPosition);

    // Recomputes the water height from the amount, the glass's height and
    // the marks' positions, and publishes it.
    void updateWaterHeight();

    // The height of the water column from the bottom of the glass; 0 at first.
    double waterHeight() const { return waterHeight_.value(); }
    using HeightSubscription = Published<double>::Subscription;
    // The callback hears the current height at once and then every new one.
    HeightSubscription subscribeWaterHeight(Published<double>::Callback callback) {
        return waterHeight_.subscribe(std::move(callback));
    }

  private:
    // Where the water surface lies, measured from the top of the glass.
    double surfacePosition() const;

    float waterAmount_;
    double totalHeight_ = 0;
    Published<double> waterHeight_{0.0};
    int numberOfRows_ = kNumberOfRows;
    WaterWidgetUnit unit_;
    std::vector<WaterLevelRow> rows_;
};

}  // namespace qrv::widget
