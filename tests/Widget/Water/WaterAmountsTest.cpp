#include <gtest/gtest.h>

#include <limits>

#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Water/WaterAmounts.hpp"

using namespace qrv::widget;
using qrv::platform::Date;

namespace {

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

TEST_F(WaterAmountsTest, TotalsConvertIntoTheTargetUnit) {
    const Date now{754'000'000};
    const std::vector<InteractiveWaterData> mixed{{now, 8, WaterWidgetUnit::oz},
                                                  {now, 250, WaterWidgetUnit::ml}};
    const float ozPerMl = 1.0f / 29.5735295625f;
    EXPECT_FLOAT_EQ(totalAmount(mixed, WaterWidgetUnit::oz), 8 + 250 * ozPerMl);
    EXPECT_FLOAT_EQ(totalAmount(mixed, WaterWidgetUnit::ml), 8 * 29.5735295625f + 250);
    EXPECT_EQ(
        totalAmount({{now, 2, WaterWidgetUnit::cups}, {now, 8, WaterWidgetUnit::oz}}, WaterWidgetUnit::oz),
        24.0f);
    EXPECT_EQ(totalAmount({}, WaterWidgetUnit::ml), 0.0f);

    // Without the library nothing is lost: amounts in other units count as they are.
    qrv::units::reloadUnitSystem("/nonexistent");
    EXPECT_EQ(
        totalAmount({{now, 2, WaterWidgetUnit::cups}, {now, 8, WaterWidgetUnit::oz}}, WaterWidgetUnit::oz),
        10.0f);
}

}  // namespace
