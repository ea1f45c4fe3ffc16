#pragma once
// The medium water widget's glass: a scale of seven marks (long ones labelled
// with their amount, short ones as small ticks) over a rounded glass, and the
// water column rising from the bottom to the day's amount.
//
// Where the marks end up is known only after layout, so the glass is drawn in
// two passes: the first reports the glass's frame and each mark's frame
// (framePreference); afterLayout() hands the marks' heights to the model, which
// works out the water height; the second pass draws the column that high.
//
// Row geometry: the glass is 7.5 rows high, each mark in the middle of its row,
// so the marks are one row apart and the lowest one is one row above the
// bottom, which stands for 0.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Geometry.hpp"
#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Water/WaterLevelWidgetViewModel.hpp"

namespace qrv::widget {

// The layout keys under which the glass reports its frame (its height) and
// each mark its frame (its vertical position), the mark's key naming the row's
// value.
struct HeightPreferenceKey {
    static constexpr const char* name = "HeightPreferenceKey";
};
struct YPositionPreferenceKey {
    static std::string name(std::int64_t rowValue) {
        return "YPositionPreferenceKey." + std::to_string(rowValue);
    }
};

struct WaterLevelWidgetView {
    platform::WidgetFamily sizeFamily = platform::WidgetFamily::systemMedium;
    platform::ColorScheme colorScheme = platform::ColorScheme::light;
    // Shared with the water view model that made it; the view reads its
    // water height and feeds it the measurements.
    std::shared_ptr<WaterLevelWidgetViewModel> viewModel;

    static constexpr double kRowsHigh = 7.5;
    static constexpr double kShortMarkWidth = 8;
    static constexpr double kLabelWidth = 40;
    static constexpr double kCornerRadius = 10;

    // A short mark is framed narrow; a long one spans the glass.
    static bool hasWidthFlag(const WaterLevelRow& row) { return row.type == WaterLevelRowType::short_; }
    // Whether the water has reached a mark (its colours switch then).
    bool isReached(const WaterLevelRow& row) const;

    // Feeds the measured frames to the model (the glass's height, then each
    // mark's position from the top of the glass) and recomputes the water
    // height. True when the height changed and the glass must be drawn again.
    bool afterLayout(const std::vector<std::pair<std::string, platform::Rect>>& preferences) const;

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view
};

}  // namespace qrv::widget
