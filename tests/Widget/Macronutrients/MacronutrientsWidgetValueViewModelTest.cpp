#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <unordered_set>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetValueViewModel.hpp"
#include "Widget/Shared/WidgetsLocalizedStringProvider.hpp"

using namespace qrv;
using namespace qrv::widget;

namespace {

class MacronutrientsWidgetValueViewModelTest : public ::testing::Test {
  protected:
    // The string table is the one beside the program, as the widgets find it.
    void SetUp() override { units::reloadUnitSystem(std::string(QRV_BIN_DIR)); }
    void TearDown() override {
        platform::StringCatalog::setMain(nullptr);
        units::reloadUnitSystem();
    }
    static void useTable(platform::StringCatalog table) {
        platform::StringCatalog::setMain(std::make_shared<const platform::StringCatalog>(std::move(table)));
    }
    static MacronutrientsWidgetValueViewModel model(
        double value, double maxValue, std::string title = "Carbs",
        MacronutrientsDataValueType type = MacronutrientsDataValueType::carbs) {
        return {.data = {.title = std::move(title), .maxValue = maxValue, .value = value, .type = type},
                .localizedProvider = WidgetsLocalizedStringProvider::shared()};
    }

    platform::ScopedLocaleOverride locale_{platform::Locale("en_US")};
};

TEST_F(MacronutrientsWidgetValueViewModelTest, ReadsLeftOrOverInWholeGrams) {
    struct Case {
        double value, maxValue;
        const char* leftOver;
        const char* goal;
        const char* valueText;
    };
    const Case cases[] = {
        {80, 80, "0 g left", "/80g", "80"},  // equal is left
        {95.4, 80, "15 g over", "/80g", "95"},
        {64.5, 80, "16 g left", "/80g", "64"},   // the library rounds 15.5 up; the value ties to even
        {0, 150.7, "151 g left", "/150g", "0"},  // the goal truncates, the difference rounds
        {95.5, 100, "5 g left", "/100g", "96"},
        {96.5, 100, "4 g left", "/100g", "96"},
        {3000, 1000, "2,000 g over", "/1000g", "3000"},  // %d is grouped, the number formatter is not
        {0, 0, "0 g left", "/0g", "0"},
    };
    for (const auto& c : cases) {
        const auto m = model(c.value, c.maxValue);
        SCOPED_TRACE(testing::Message() << c.value << " of " << c.maxValue);
        EXPECT_EQ(m.leftOverText(), c.leftOver);
        EXPECT_EQ(m.goalText(), c.goal);
        EXPECT_EQ(m.valueText(), c.valueText);
    }
}

TEST_F(MacronutrientsWidgetValueViewModelTest, TextsComeFromTheStringTable) {
    platform::ScopedLocaleOverride german{platform::Locale("de_DE")};
    EXPECT_EQ(model(65, 80).leftOverText(), "Noch 15 g übrig");
    EXPECT_EQ(model(95, 80).leftOverText(), "15 g zu viel");
    useTable(platform::StringCatalog());  // every key shows as itself
    EXPECT_EQ(model(50, 150).leftOverText(), "dashb.macros.gram.left");
    EXPECT_EQ(model(160, 150).leftOverText(), "dashb.macros.gram.over");
    EXPECT_EQ(model(50, 150).goalText(), "/150unitSystems.gram.abbreviation.plural");
}

TEST_F(MacronutrientsWidgetValueViewModelTest, TruncatesWhenTheUnitLibraryIsMissing) {
    units::reloadUnitSystem("/nonexistent");
    ASSERT_FALSE(units::isUnitSystemAvailable());
    EXPECT_EQ(model(64.1, 80).leftOverText(), "15 g left");  // 15.9: truncated, not rounded
    EXPECT_EQ(model(95.9, 80).leftOverText(), "15 g over");
    units::reloadUnitSystem(std::string(QRV_BIN_DIR));
    EXPECT_EQ(model(64.1, 80).wholeGramDifference(), 16);
}

TEST_F(MacronutrientsWidgetValueViewModelTest, HandsTheRatioToTheRingUnclamped) {
    EXPECT_DOUBLE_EQ(model(120, 80).progress(), 1.5);
    EXPECT_TRUE(std::isnan(model(0, 0).progress()));
    EXPECT_TRUE(std::isinf(model(10, 0).progress()));
    EXPECT_EQ(model(120, 80).reverseProgress(), 0);
}

TEST_F(MacronutrientsWidgetValueViewModelTest, RingIsDrawnInTheNutrientsColours) {
    const auto config = model(10, 20, "Fat", MacronutrientsDataValueType::fat).ringConfiguration(7.5);
    EXPECT_EQ(config.trackForegroundColor.name, "fat");
    EXPECT_EQ(config.trackOverageForegroundColor.name, "fatTxt");
    EXPECT_EQ(config.trackOverageBackgroundColor.name, "fatBG");
    EXPECT_EQ(config.trackWidth, 7.5);
    EXPECT_EQ(config.titleAccessibilityId(), "MacroStatsView_progressViewTitle");
}

TEST_F(MacronutrientsWidgetValueViewModelTest, IdentityIsTitleAndLeftOverText) {
    // The same title and "20 g left" from different figures and types.
    const auto a = model(30, 50);
    const auto b = model(80, 100, "Carbs", MacronutrientsDataValueType::fat);
    EXPECT_EQ(a, b);
    EXPECT_NE(a, model(70, 50));  // 20 g over
    EXPECT_NE(a, model(30, 50, "Fat"));
    const std::unordered_set<MacronutrientsWidgetValueViewModel> set{a, b, model(70, 50)};
    EXPECT_EQ(set.size(), 2u);
}

}  // namespace
