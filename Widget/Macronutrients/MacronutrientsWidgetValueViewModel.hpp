#pragma once
// One macronutrient's ring as the macronutrients widget shows it: grams eaten
// in the middle, "/" and the goal under it, a line saying how many whole grams
// are left (or over), the ring's progress and its styling. Everything is
// computed on demand from the record; nothing is cached.
#include <cstddef>
#include <cstdint>
#include <string>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Calories/AnimatedCircularProgressViewConfig.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"
#include "Widget/Shared/WidgetColorHelpers.hpp"
#include "Widget/Shared/WidgetsLocalizedStringProvider.hpp"

namespace qrv::widget {

struct MacronutrientsWidgetValueViewModel {
    // The accessibility prefix of the ring's texts.
    static constexpr const char* kTextAccessibilityIdPrefix = "MacroStatsView";

    MacronutrientsDataEntryValue data;
    // Carried for the views; the texts below use the extension's own table
    // directly, as the widget always has.
    LocalizedStringProviderRef localizedProvider = WidgetsLocalizedStringProvider::shared();

    // Over only when the goal is strictly below what was eaten: eating exactly
    // the goal reads "0 g left".
    bool isOver() const { return data.maxValue < data.value; }

    // The grams between goal and eaten as a whole number: the unit library's
    // rounding of the gram amount, or the amount truncated toward zero when
    // the library cannot make a gram value or its text is not an integer.
    // Stops the program for an amount that is not finite or does not fit 64
    // bits (the app never writes one).
    std::int64_t wholeGramDifference() const;

    // "35 g left" / "15 g over", from the string table's format for the case.
    std::string leftOverText() const;

    // Grams eaten as the platform's default number formatter writes them:
    // whole, ties to even, no grouping; "--" if it gives nothing.
    std::string valueText() const;

    // "/" + the goal truncated to whole grams + the gram unit: "/150g".
    std::string goalText() const;

    // Eaten over goal, unclamped: above 1 when over, and infinite or not a
    // number for a goal of 0; the ring draws each as it stands.
    double progress() const { return data.value / data.maxValue; }
    // The ring's counter-clockwise arc is for exercise; macronutrients have none.
    double reverseProgress() const { return 0; }

    // The nutrient's main, text and background colours.
    MacronutrientColors colors() const { return WidgetColorHelpers::macronutrientColors(data.type); }

    AnimatedCircularProgressViewConfig ringConfiguration(double trackWidth) const;

    // The left/over line: bold when over, regular when left; secondary colour.
    catalog::QRVFont leftOverFontStyle() const;
    platform::Font leftOverFont() const;
    platform::Color leftOverColor() const;

    // Identity for lists: the nutrient's title and its left/over text, in that
    // order. Goal, amount and type are deliberately not compared.
    std::size_t hashValue() const;
    friend bool operator==(const MacronutrientsWidgetValueViewModel& lhs,
                           const MacronutrientsWidgetValueViewModel& rhs) {
        return lhs.data.title == rhs.data.title && lhs.leftOverText() == rhs.leftOverText();
    }
};

}  // namespace qrv::widget

template <>
struct std::hash<qrv::widget::MacronutrientsWidgetValueViewModel> {
    std::size_t operator()(const qrv::widget::MacronutrientsWidgetValueViewModel& model) const {
        return model.hashValue();
    }
};
