#include "Widget/Macronutrients/MacronutrientsWidgetValueViewModel.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetViewModel.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_set>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Shared/WidgetsLocalizedStringProvider.hpp"

using namespace qrv;
using namespace qrv::widget;

namespace {

constexpr const char* kEnglishTable = R"({
  "sourceLanguage": "en", "version": "1.0",
  "strings": {
    "dashb.macros.gram.left": {"localizations": {"en": {"stringUnit": {"state": "translated", "value": "%d g left"}},
                                                 "de": {"stringUnit": {"state": "translated", "value": "noch %d g"}}}},
    "dashb.macros.gram.over": {"localizations": {"en": {"stringUnit": {"state": "translated", "value": "%d g over"}}}},
    "unitSystems.gram.abbreviation.plural": {"localizations": {"en": {"stringUnit": {"state": "translated", "value": "g"}}}}
  }
})";

class MacronutrientsWidgetValueViewModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        units::reloadUnitSystem(std::string(QRV_BIN_DIR));
        useTable(platform::StringCatalog::parse(kEnglishTable));
    }
    void TearDown() override {
        platform::StringCatalog::setMain(nullptr);
        units::reloadUnitSystem();
    }

    static void useTable(platform::StringCatalog table) {
        platform::StringCatalog::setMain(std::make_shared<const platform::StringCatalog>(std::move(table)));
    }

    static MacronutrientsWidgetValueViewModel model(double value, double maxValue,
                                                    MacronutrientsDataValueType type = MacronutrientsDataValueType::carbs,
                                                    std::string title = "Carbs") {
        return MacronutrientsWidgetValueViewModel{
            .data = MacronutrientsDataEntryValue{.title = std::move(title), .maxValue = maxValue, .value = value, .type = type},
            .localizedProvider = WidgetsLocalizedStringProvider::shared()};
    }

    platform::ScopedLocaleOverride locale_{platform::Locale("en_US")};
};

TEST_F(MacronutrientsWidgetValueViewModelTest, ReadsLeftOrOverInWholeGrams) {
    struct Case {
        double value, maxValue;
        bool over;
        std::int64_t grams;
        const char* leftOver;
        const char* goal;
        const char* valueText;
    };
    const Case cases[] = {
        {50, 165, false, 115, "115 g left", "/165g", "50"},
        {80, 80, false, 0, "0 g left", "/80g", "80"},          // equal is left
        {95.4, 80, true, 15, "15 g over", "/80g", "95"},
        {64.5, 80, false, 16, "16 g left", "/80g", "64"},      // 15.5 g left rounds up; 64.5 eaten rounds to even
        {0, 150.7, false, 151, "151 g left", "/150g", "0"},    // the goal truncates, the difference rounds
        {95.5, 100, false, 5, "5 g left", "/100g", "96"},      // value text ties to even
        {96.5, 100, false, 4, "4 g left", "/100g", "96"},
        {3000, 1000, true, 2000, "2,000 g over", "/1000g", "3000"},  // %d is grouped, the number formatter is not
        {0, 0, false, 0, "0 g left", "/0g", "0"},
    };
    for (const auto& c : cases) {
        const auto m = model(c.value, c.maxValue);
        SCOPED_TRACE(testing::Message() << c.value << " of " << c.maxValue);
        EXPECT_EQ(m.isOver(), c.over);
        EXPECT_EQ(m.wholeGramDifference(), c.grams);
        EXPECT_EQ(m.leftOverText(), c.leftOver);
        EXPECT_EQ(m.goalText(), c.goal);
        EXPECT_EQ(m.valueText(), c.valueText);
    }
}

TEST_F(MacronutrientsWidgetValueViewModelTest, TruncatesWhenTheUnitLibraryIsMissing) {
    units::reloadUnitSystem("/nonexistent");
    ASSERT_FALSE(units::isUnitSystemAvailable());
    EXPECT_EQ(model(64.1, 80).wholeGramDifference(), 15);  // 15.9 g left: truncated, not rounded
    EXPECT_EQ(model(64.1, 80).leftOverText(), "15 g left");
    EXPECT_EQ(model(95.9, 80).wholeGramDifference(), 15);
    EXPECT_EQ(model(95.9, 80).leftOverText(), "15 g over");

    units::reloadUnitSystem(std::string(QRV_BIN_DIR));
    EXPECT_EQ(model(64.1, 80).wholeGramDifference(), 16);
}

TEST_F(MacronutrientsWidgetValueViewModelTest, ShowsKeysWithAnEmptyTable) {
    useTable(platform::StringCatalog());
    EXPECT_EQ(model(50, 150).leftOverText(), "dashb.macros.gram.left");
    EXPECT_EQ(model(160, 150).leftOverText(), "dashb.macros.gram.over");
    EXPECT_EQ(model(50, 150).goalText(), "/150unitSystems.gram.abbreviation.plural");
}

TEST_F(MacronutrientsWidgetValueViewModelTest, FormatsForTheCurrentLocale) {
    platform::ScopedLocaleOverride german{platform::Locale("de_DE")};
    EXPECT_EQ(model(0, 1500).leftOverText(), "noch 1.500 g");
    EXPECT_EQ(model(1600, 1500).leftOverText(), "100 g over");  // no German text: the source language's
}

// The extension's own table, in each of its languages.
TEST_F(MacronutrientsWidgetValueViewModelTest, ReadsInEveryLanguageOfTheShippedTable) {
    const auto table = platform::StringCatalog::load(std::filesystem::path(QRV_TEST_DATA) / ".." / "Widget" /
                                                     "Resources" / platform::StringCatalog::kDefaultTableFile);
    useTable(table);
    struct Case {
        const char* locale;
        const char* left;
        const char* over;
    };
    const Case cases[] = {
        {"en_US", "15 g left", "15 g over"},
        {"de_DE", "Noch 15 g übrig", "15 g zu viel"},
        {"es_ES", "Te quedan 15 g", "15 g de más"},
        {"fr_FR", "15 g restants", "15 g en trop"},
    };
    for (const auto& c : cases) {
        platform::ScopedLocaleOverride inLanguage{platform::Locale(c.locale)};
        SCOPED_TRACE(c.locale);
        EXPECT_EQ(model(65, 80).leftOverText(), c.left);
        EXPECT_EQ(model(95, 80).leftOverText(), c.over);
        EXPECT_EQ(model(0, 150.7).goalText(), "/150g");
    }
    // A language that the table lacks falls back to the source language.
    platform::ScopedLocaleOverride unknown{platform::Locale("sv_SE")};
    EXPECT_EQ(model(65, 80).leftOverText(), "15 g left");
}

TEST_F(MacronutrientsWidgetValueViewModelTest, HandsTheRatioToTheRingUnclamped) {
    EXPECT_DOUBLE_EQ(model(80, 80).progress(), 1.0);
    EXPECT_DOUBLE_EQ(model(120, 80).progress(), 1.5);
    EXPECT_TRUE(std::isnan(model(0, 0).progress()));
    EXPECT_TRUE(std::isinf(model(10, 0).progress()));
    EXPECT_EQ(model(120, 80).reverseProgress(), 0);
}

TEST_F(MacronutrientsWidgetValueViewModelTest, StylesRingAndLineByNutrient) {
    struct Case {
        MacronutrientsDataValueType type;
        const char *main, *text, *background;
    };
    const Case cases[] = {
        {MacronutrientsDataValueType::carbs, "carb", "carbTxt", "carbBG"},
        {MacronutrientsDataValueType::fat, "fat", "fatTxt", "fatBG"},
        {MacronutrientsDataValueType::protein, "protein", "proteinTxt", "proteinBG"},
    };
    for (const auto& c : cases) {
        const auto config = model(10, 20, c.type).ringConfiguration(7.5);
        EXPECT_EQ(config.trackBackgroundColor.name, "neutralsBackground");
        EXPECT_EQ(config.trackForegroundColor.name, c.main);
        EXPECT_EQ(config.trackOverageForegroundColor.name, c.text);
        EXPECT_EQ(config.trackOverageBackgroundColor.name, c.background);
        EXPECT_EQ(config.trackWidth, 7.5);
        EXPECT_EQ(config.titleAccessibilityId(), "MacroStatsView_progressViewTitle");
        EXPECT_EQ(config.subtitleAccessibilityId(), "MacroStatsView_progressViewSubtitle");
        EXPECT_EQ(config.titleFont, platform::Font::system(18, platform::FontWeight::semibold));
        EXPECT_EQ(config.titleColor.name, "neutralsPrimary");
        EXPECT_EQ(config.subtitleFont, platform::Font::system(12, platform::FontWeight::regular));
        EXPECT_EQ(config.subtitleColor.name, "neutralsSecondary");
    }
    EXPECT_EQ(rawValue(model(95.4, 80).leftOverFontStyle()), 19);
    EXPECT_EQ(rawValue(model(80, 80).leftOverFontStyle()), 18);
    EXPECT_EQ(model(95.4, 80).leftOverFont(), platform::Font::system(12, platform::FontWeight::bold));
    EXPECT_EQ(model(80, 80).leftOverColor().name, "neutralsSecondary");
}

TEST_F(MacronutrientsWidgetValueViewModelTest, IdentityIsTitleAndLeftOverText) {
    // Same title and the same "20 g left", from different figures.
    const auto a = model(30, 50);
    const auto b = model(80, 100, MacronutrientsDataValueType::fat);
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::hash<MacronutrientsWidgetValueViewModel>{}(a), std::hash<MacronutrientsWidgetValueViewModel>{}(b));
    EXPECT_NE(a, model(30, 51));                                            // 21 g left
    EXPECT_NE(a, model(70, 50));                                            // 20 g over
    EXPECT_NE(a, model(30, 50, MacronutrientsDataValueType::carbs, "Fat"));
    const std::unordered_set<MacronutrientsWidgetValueViewModel> set{a, b, model(70, 50)};
    EXPECT_EQ(set.size(), 2u);
}

TEST_F(MacronutrientsWidgetValueViewModelTest, FindsTheRingOfEachRecordedNutrient) {
    MacronutrientsWidgetViewModel widget{.data = {}, .localizedProvider = WidgetsLocalizedStringProvider::shared()};
    widget.data.values[MacronutrientsDataValueType::fat] =
        MacronutrientsDataEntryValue{.title = "Fat", .maxValue = 65, .value = 35, .type = MacronutrientsDataValueType::fat};
    const auto fat = widget.valueViewModel(MacronutrientsDataValueType::fat);
    ASSERT_TRUE(fat);
    EXPECT_EQ(fat->leftOverText(), "30 g left");
    EXPECT_EQ(fat->localizedProvider, widget.localizedProvider);
    EXPECT_FALSE(widget.valueViewModel(MacronutrientsDataValueType::protein));
}

}  // namespace
