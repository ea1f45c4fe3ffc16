#include <gtest/gtest.h>

#include "Widget/Calories/CaloriesConsumedWidgetViewModel.hpp"

using namespace qrv::widget;

namespace {

TEST(CaloriesConsumedWidgetViewModelTest, BuildsTheThreeRowsFromTheRecord) {
    // The sample: base goal 1,500, 1,750 with exercise, 500 eaten, 250 burnt.
    const CaloriesConsumedWidgetViewModel model{
        CaloriesConsumedDataEntry::makeSample(qrv::platform::Date{0})};
    const auto stats = model.stats();
    ASSERT_EQ(stats.size(), 3u);
    // The base goal row shows the base goal, not the goal with exercise, and
    // the exercise row uses the calories icon.
    EXPECT_EQ(stats.at(CaloriesConsumedWidgetStatType::baseGoal),
              (CaloriesConsumedWidgetStat{"Base Goal", "Base Goal", "1,500"}));
    EXPECT_EQ(stats.at(CaloriesConsumedWidgetStatType::food),
              (CaloriesConsumedWidgetStat{"Food", "Food", "500"}));
    EXPECT_EQ(stats.at(CaloriesConsumedWidgetStatType::exercise),
              (CaloriesConsumedWidgetStat{"Exercise", "Calories", "250"}));
}

}  // namespace
