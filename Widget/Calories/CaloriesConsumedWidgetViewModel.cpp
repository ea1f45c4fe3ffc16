#include "Widget/Calories/CaloriesConsumedWidgetViewModel.hpp"

namespace qrv::widget {

std::map<CaloriesConsumedWidgetStatType, CaloriesConsumedWidgetStat> CaloriesConsumedWidgetViewModel::stats()
    const {
    std::map<CaloriesConsumedWidgetStatType, CaloriesConsumedWidgetStat> result;
    result.emplace(
        CaloriesConsumedWidgetStatType::baseGoal,
        CaloriesConsumedWidgetStat{.title = data.goalTitle, .icon = "Base Goal", .value = data.goal});
    result.emplace(
        CaloriesConsumedWidgetStatType::food,
        CaloriesConsumedWidgetStat{.title = data.consumedTitle, .icon = "Food", .value = data.consumed});
    result.emplace(
        CaloriesConsumedWidgetStatType::exercise,
        CaloriesConsumedWidgetStat{.title = data.exerciseTitle, .icon = "Calories", .value = data.exercise});
    return result;
}

}  // namespace qrv::widget
