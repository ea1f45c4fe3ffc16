#include <gtest/gtest.h>

#include <limits>

#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Water/WaterAmounts.hpp"

using namespace qrv::widget;

namespace {

// Totals of taps in mixed units are the water provider test's cases.
class WaterAmountsTest : public ::testing::Test {
  protected:
    void SetUp() override { qrv::units::reloadUnitSystem(std::string(QRV_BIN_DIR)); }
    void TearDown() override { qrv::units::reloadUnitSystem(); }
};

TEST_F(WaterAmountsTest, FormatsThroughTheUnitLibraryOrFallsBack) {
    struct Case {
        WaterWidgetUnit unit;
        float amount;
        const char* withLibrary;
        const char* without;
    };
    const Case cases[] = {
        {WaterWidgetUnit::ml, 250, "250 ml", "250.0 ml"},
        {WaterWidgetUnit::ml, 249.5f, "250 ml", "249.5 ml"},  // whole millilitres, half away from zero
        {WaterWidgetUnit::cups, 2, "2.0 cups", "2.0 cups"},
        {WaterWidgetUnit::oz, 8, "8.0 fl oz", "8.0 oz"},
        {WaterWidgetUnit::oz, 24.25f, "24.3 fl oz", "24.25 oz"},
        {WaterWidgetUnit::oz, std::numeric_limits<float>::infinity(), "inf oz", "inf oz"},
    };
    for (const auto& c : cases) EXPECT_EQ(formattedAmount(c.unit, c.amount), c.withLibrary) << c.withLibrary;
    qrv::units::reloadUnitSystem("/nonexistent");
    for (const auto& c : cases) EXPECT_EQ(formattedAmount(c.unit, c.amount), c.without) << c.without;
}

}  // namespace
