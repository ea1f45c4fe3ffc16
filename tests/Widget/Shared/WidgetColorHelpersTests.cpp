#include <gtest/gtest.h>

#include "Widget/Shared/WidgetColorHelpers.hpp"

namespace qrv::widget {
namespace {

enum class Nutrient { carbs, fat, protein };

TEST(WidgetColorHelpers, EachNutrientGetsItsMainTextAndBackgroundTokens) {
    struct Case {
        int raw;
        const char* main;
        const char* text;
        const char* background;
    };
    const Case cases[] = {
        {0, "carb", "carbTxt", "carbBG"},
        {1, "fat", "fatTxt", "fatBG"},
        {2, "protein", "proteinTxt", "proteinBG"},
        {7, "protein", "proteinTxt", "proteinBG"},  // any other value is protein
        {-1, "protein", "proteinTxt", "proteinBG"},
    };
    for (const auto& c : cases) {
        const auto colors = WidgetColorHelpers::macronutrientColors(c.raw);
        EXPECT_EQ(colors.main.name, c.main) << c.raw;
        EXPECT_EQ(colors.text.name, c.text) << c.raw;
        EXPECT_EQ(colors.background.name, c.background) << c.raw;
    }
    EXPECT_EQ(WidgetColorHelpers::macronutrientColors(Nutrient::fat),
              WidgetColorHelpers::macronutrientColors(1));
}

}  // namespace
}  // namespace qrv::widget
