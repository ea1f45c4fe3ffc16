#pragma once
// The macronutrients widget's content: carbohydrates, fat and protein against
// their goals, laid out per widget family, or the log-in prompt (with "--"
// where figures would be) when the app has no signed-in user.
//
//   accessoryCircular     three concentric arcs, carbs outermost
//   accessoryRectangular  one line per nutrient: name, then eaten / goal
//   accessoryInline       "Carbs 50g / Fat 35g / Protein 65g"
//   every other family    three rings side by side (the medium widget); in a
//                         narrow one, a list with a small ring per nutrient
//
// The three are shown only when the record holds all of them; otherwise the
// figures read "--". The deep link to the app is the widget's, not the view's.
#include <optional>
#include <string>
#include <vector>

#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetViewModel.hpp"

namespace qrv::widget {

struct MacronutrientsWidgetView {
    MacronutrientsWidgetViewModel viewModel;
    platform::WidgetFamily sizeFamily = platform::WidgetFamily::systemMedium;

    // The three value view models in the order carbs, fat, protein, or
    // nothing unless the user is logged in and the record holds all three.
    std::optional<std::vector<MacronutrientsWidgetValueViewModel>> values() const;

    // Grams as a whole count for the compact layouts ("1,234"), "--" for a
    // figure that is not a finite number.
    static std::string gramCount(double grams);

    static constexpr double kHorizontalPadding = 12;
    static constexpr double kVerticalPadding = 12;
    // Narrower than this (the small widget), the nutrients are listed one per
    // line with small rings instead of three rings side by side.
    static constexpr double kMinimumWidthForRings = 250;

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view

  private:
    platform::View medium() const;
    static platform::View compactList(const std::vector<MacronutrientsWidgetValueViewModel>& values);
    platform::View circular() const;
    platform::View rectangular() const;
    platform::View inlineText() const;
    std::string loginPrompt() const;
};

}  // namespace qrv::widget
