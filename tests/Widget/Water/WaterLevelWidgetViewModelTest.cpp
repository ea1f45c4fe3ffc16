#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Widget/Water/WaterLevelWidgetViewModel.hpp"

using namespace qrv::widget;

namespace {

std::vector<std::int64_t> rowValues(const WaterLevelWidgetViewModel& model) {
    std::vector<std::int64_t> values;
    for (const auto& row : model.rows()) values.push_back(row.value);
    return values;
}

// A glass 140 points high whose seven marks the view measured 20 points apart,
// the top mark at y 0 and the lowest at y 120 (the bottom, for 0, is at 140).
void measure(WaterLevelWidgetViewModel& model) {
    model.setTotalHeight(140);
    double y = 0;
    for (const auto& row : std::vector<WaterLevelRow>(model.rows())) {
        model.updateRowPosition(row.value, y);
        y += 20;
    }
}

TEST(WaterLevelWidgetViewModelTest, BuildsSevenMarksFromTheTopOfTheScale) {
    struct Case {
        WaterWidgetUnit unit;
        float amount;
        std::vector<std::int64_t> rows;
    };
    const Case cases[] = {
        {WaterWidgetUnit::oz, 0, {56, 48, 40, 32, 24, 16, 8}},
        {WaterWidgetUnit::oz, 56, {56, 48, 40, 32, 24, 16, 8}},   // exactly seven steps: the top stays
        {WaterWidgetUnit::oz, 60, {64, 56, 48, 40, 32, 24, 16}},  // rounded up to the next step
        {WaterWidgetUnit::ml, 600, {1750, 1500, 1250, 1000, 750, 500, 250}},
        {WaterWidgetUnit::ml, 1800, {2000, 1750, 1500, 1250, 1000, 750, 500}},
        {WaterWidgetUnit::cups, 14.5f, {16, 14, 12, 10, 8, 6, 4}},
        {WaterWidgetUnit::cups, -3, {14, 12, 10, 8, 6, 4, 2}},
        {WaterWidgetUnit::cups, std::numeric_limits<float>::quiet_NaN(), {14, 12, 10, 8, 6, 4, 2}},
    };
    for (const auto& c : cases) {
        WaterLevelWidgetViewModel model(c.amount, c.unit);
        EXPECT_TRUE(model.rows().empty());
        model.buildRows();
        EXPECT_EQ(model.maximumValue(), c.rows.front());
        EXPECT_EQ(rowValues(model), c.rows) << rawValue(c.unit) << " " << c.amount;
        for (std::size_t i = 0; i < model.rows().size(); ++i) {
            EXPECT_EQ(model.rows()[i].type,
                      i % 2 == 0 ? WaterLevelRowType::large : WaterLevelRowType::short_);
            EXPECT_EQ(model.rows()[i].yPosition, 0);
        }
    }
}

TEST(WaterLevelWidgetViewModelTest, PutsTheSurfaceOnOrBetweenTheMarks) {
    struct Case {
        WaterWidgetUnit unit;
        float amount;
        double height;
    };
    const Case cases[] = {
        {WaterWidgetUnit::oz, 0, 0},
        {WaterWidgetUnit::oz, -5, 0},
        {WaterWidgetUnit::oz, 8, 20},      // on the lowest mark
        {WaterWidgetUnit::oz, 4, 10},      // halfway between the bottom and the mark for 8
        {WaterWidgetUnit::oz, 12, 30},     // halfway between 8 and 16
        {WaterWidgetUnit::oz, 56, 140},    // the top mark at the rim
        {WaterWidgetUnit::oz, 60, 130},    // scale 64..16: halfway between 56 and 64
        {WaterWidgetUnit::ml, 600, 48},    // 500 at y 100, 750 at y 80: 100 - 20 * 100 / 250
        {WaterWidgetUnit::ml, 1800, 124},  // scale 2000..500: 1750 at y 20, 2000 at y 0
        {WaterWidgetUnit::cups, std::numeric_limits<float>::quiet_NaN(), 0},
    };
    for (const auto& c : cases) {
        WaterLevelWidgetViewModel model(c.amount, c.unit);
        model.buildRows();
        measure(model);
        model.updateWaterHeight();
        EXPECT_DOUBLE_EQ(model.waterHeight(), c.height) << rawValue(c.unit) << " " << c.amount;
    }
}

TEST(WaterLevelWidgetViewModelTest, StaysInsideTheGlass) {
    WaterLevelWidgetViewModel unmeasured(24, WaterWidgetUnit::oz);
    unmeasured.buildRows();
    unmeasured.updateWaterHeight();
    EXPECT_EQ(unmeasured.waterHeight(), 0);

    // A mark reported above the rim never pushes the water past it.
    WaterLevelWidgetViewModel model(56, WaterWidgetUnit::oz);
    model.buildRows();
    model.setTotalHeight(100);
    model.updateRowPosition(3, 10);  // no mark for 3: nothing changes
    model.updateRowPosition(56, -30);
    EXPECT_EQ(model.rows()[0].yPosition, -30);
    EXPECT_EQ(model.rows()[1].yPosition, 0);
    model.updateWaterHeight();
    EXPECT_EQ(model.waterHeight(), 100);
}

TEST(WaterLevelWidgetViewModelTest, PublishesEveryNewHeight) {
    WaterLevelWidgetViewModel model(4, WaterWidgetUnit::oz);
    model.buildRows();
    std::vector<double> heard;
    auto subscription = model.subscribeWaterHeight([&](double height) { heard.push_back(height); });
    measure(model);
    model.updateWaterHeight();
    subscription.cancel();
    model.setTotalHeight(0);
    model.updateWaterHeight();
    EXPECT_EQ(heard, (std::vector<double>{0, 10}));  // the current value first, then each new one

    // A callback may cancel a later one; a subscription may outlive its value.
    Published<int> value(1);
    std::vector<int> second;
    Published<int>::Subscription secondSubscription;
    auto first = value.subscribe([&](int v) {
        if (v == 2) secondSubscription.cancel();
    });
    secondSubscription = value.subscribe([&](int v) { second.push_back(v); });
    value.set(2);
    EXPECT_EQ(second, (std::vector<int>{1}));
    Published<int>::Subscription orphan;
    {
        Published<int> shortLived(0);
        orphan = shortLived.subscribe([](int) {});
    }
    EXPECT_FALSE(orphan.isActive());
}

TEST(WaterLevelWidgetViewModelDeathTest, StopsOnAnAmountBeyondWholeUnits) {
    WaterLevelWidgetViewModel model(std::numeric_limits<float>::infinity(), WaterWidgetUnit::ml);
    EXPECT_DEATH(model.buildRows(), "cannot be converted");
}

}  // namespace
