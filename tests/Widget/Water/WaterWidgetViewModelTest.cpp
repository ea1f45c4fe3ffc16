#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Water/WaterWidgetViewModel.hpp"

using namespace qrv;
using namespace qrv::widget;

namespace {

class WaterWidgetViewModelTest : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::StringCatalog::setMain(std::make_shared<const platform::StringCatalog>());
        units::reloadUnitSystem("/nonexistent");
    }
    void TearDown() override {
        platform::StringCatalog::setMain(nullptr);
        units::reloadUnitSystem();
    }

    static WaterDataEntry entry(float value, WaterWidgetUnit unit, bool loggedIn = true) {
        WaterDataEntry e{};
        e.isLoggedIn = loggedIn;
        e.waterValue = value;
        e.waterUnit = unit;
        return e;
    }

    platform::ScopedLocaleOverride locale_{platform::Locale("en_US")};
};

TEST_F(WaterWidgetViewModelTest, FillsTheTextsFromTheEntry) {
    // Without the unit library the amounts read as plain numbers and units,
    // and with an empty string table every key shows as itself.
    WaterWidgetViewModel model(entry(600, WaterWidgetUnit::ml, false));
    EXPECT_FALSE(model.isLoggedIn());
    EXPECT_EQ(model.buttonText(), "+ 250.0 ml");
    EXPECT_EQ(model.waterRepresentation(), "600.0 ml");
    EXPECT_EQ(model.waterAmount(), 600.0f);
    EXPECT_EQ(model.waterUnit(), WaterWidgetUnit::ml);
    EXPECT_EQ(model.topText(), "Water");
    EXPECT_EQ(model.subtitle(), "Today");
    EXPECT_EQ(model.topIconName(), "Water");
    EXPECT_EQ(model.loggedOutMessage(), "dashb.widget.login.long");
}

TEST_F(WaterWidgetViewModelTest, CaptionsTheButtonThroughTheUnitLibrary) {
    units::reloadUnitSystem(std::string(QRV_BIN_DIR));
    ASSERT_TRUE(units::isUnitSystemAvailable());
    WaterWidgetViewModel model(entry(600, WaterWidgetUnit::ml));
    EXPECT_EQ(model.buttonText(), "+ 250 ml");
    EXPECT_EQ(model.waterRepresentation(), "600 ml");
}

TEST_F(WaterWidgetViewModelTest, MakesTheGlassOnceWithItsMarks) {
    WaterWidgetViewModel model(entry(60, WaterWidgetUnit::oz));
    const auto glass = model.waterLevelViewModel();
    ASSERT_TRUE(glass);
    EXPECT_EQ(glass.get(), model.waterLevelViewModel().get());
    EXPECT_EQ(glass->waterAmount(), 60.0f);
    EXPECT_EQ(glass->unit(), WaterWidgetUnit::oz);
    EXPECT_EQ(glass->numberOfRows(), 7);
    EXPECT_EQ(glass->totalHeight(), 0);
    EXPECT_EQ(glass->waterHeight(), 0);
    ASSERT_EQ(glass->rows().size(), 7u);
    EXPECT_EQ(glass->rows().front().value, 64);
    EXPECT_EQ(glass->rows().back().value, 16);
}

}  // namespace
