#pragma once
// Colour helpers of the widget views.
#include <type_traits>

#include "Platform/drawing/Color.hpp"

namespace qrv::widget {

// A macronutrient's three palette colours.
struct MacronutrientColors {
    platform::Color main;
    platform::Color text;
    platform::Color background;
    friend bool operator==(const MacronutrientColors&, const MacronutrientColors&) = default;
};

class WidgetColorHelpers {
  public:
    // By the nutrient type's raw value: 0 carbs, 1 fat, anything else protein.
    static MacronutrientColors macronutrientColors(int typeRawValue);

    template <class Type>
    requires std::is_enum_v<Type>
    static MacronutrientColors macronutrientColors(Type type) {
        return macronutrientColors(static_cast<int>(type));
    }
};

}  // namespace qrv::widget
