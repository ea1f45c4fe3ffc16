#include <gtest/gtest.h>

#include "Widget/Shared/WidgetColorHelpers.hpp"

namespace qrv::widget {
namespace {

enum class Nutrient { carbs, fat, protein };

TEST(WidgetColorHelpers, EachNutrientGetsItsMainTextAndBackgroundTokens) {
    // Raw values as the records carry them; any other value is protein.
    const std::pair<int, const char*> cases[] = {
        {0, "carb"}, {1, "fat"}, {2, "protein"}, {7, "protein"}, {-1, "protein"}};
    for (const auto& [raw, token] : cases) {
        const auto colors = WidgetColorHelpers::macronutrientColors(raw);
        EXPECT_EQ(colors.main.name, token) << raw;
        EXPECT_EQ(colors.text.name, std::string(token) + "Txt") << raw;
        EXPECT_EQ(colors.background.name, std::string(token) + "BG") << raw;
    }
    EXPECT_EQ(WidgetColorHelpers::macronutrientColors(Nutrient::fat),
              WidgetColorHelpers::macronutrientColors(1));
}

}  // namespace
}  // namespace qrv::widget
