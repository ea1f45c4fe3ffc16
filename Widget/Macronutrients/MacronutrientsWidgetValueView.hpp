#pragma once
// One macronutrient on the macronutrients widget: its name, the ring with the
// grams eaten over "/" and the goal, and below it how many grams are left (or
// over). Everything is sized from the height it is laid out in, so three of
// them side by side fill a medium widget on the phone and on the tablet.
#include "Platform/drawing/View.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetValueViewModel.hpp"

namespace qrv::widget {

struct MacronutrientsWidgetValueView {
    MacronutrientsWidgetValueViewModel viewModel;

    // The ring's side and stroke as parts of the available height.
    static constexpr double kRingHeightRatio = 0.45;
    static constexpr double kTrackWidthRatio = 8.0 / 166.0;
    static constexpr double kSpacing = 6;

    // What stands in a ring's place when there is no figure to show: an empty
    // track around "--", sized like a ring in a view of that height.
    static platform::View placeholder(std::string title = {});

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view
};

}  // namespace qrv::widget
