#include <gtest/gtest.h>

#include "Widget/Calories/CaloriesConsumedWidgetViewModel.hpp"

using namespace qrv::widget;

namespace {

TEST(CaloriesConsumedWidgetViewModelTest, BuildsTheThreeRowsFromTheRecord) {
    CaloriesConsumedDataEntry entry{};
    entry.goalTitle = "Base Goal";
    entry.goal = "1,500";
    entry.goalAdjustedForExercise = "1,750";
    entry.consumedTitle = "Food";
    entry.consumed = "500";
    entry.exerciseTitle = "Exercise";
    entry.exercise = "250";
    const CaloriesConsumedWidgetViewModel model{entry};

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
    EXPECT_EQ(model.stats(), stats);
}

TEST(CaloriesConsumedWidgetViewModelTest, KeepsTheIconsForEmptyTexts) {
    const auto stats = CaloriesConsumedWidgetViewModel{CaloriesConsumedDataEntry{}}.stats();
    ASSERT_EQ(stats.size(), 3u);
    const char* icons[] = {"Base Goal", "Food", "Calories"};
    for (int raw = 0; raw < 3; ++raw) {
        const auto& stat = stats.at(*caloriesConsumedWidgetStatType(raw));
        EXPECT_EQ(stat.icon, icons[raw]);
        EXPECT_TRUE(stat.title.empty());
        EXPECT_TRUE(stat.value.empty());
    }
    EXPECT_FALSE(caloriesConsumedWidgetStatType(3));
    EXPECT_FALSE(caloriesConsumedWidgetStatType(-1));
}

}  // namespace
