#pragma once
// The calories widget's view model: the record as the main app wrote it, every
// figure and title already localised, plus the stat rows drawn from it. The
// widget does no arithmetic on calories.
#include <map>

#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Calories/CaloriesConsumedWidgetStat.hpp"

namespace qrv::widget {

struct CaloriesConsumedWidgetViewModel {
    CaloriesConsumedDataEntry data;

    // The three rows by type, built from `data` on every call. The base-goal
    // row shows the base goal, not the goal adjusted for exercise, and the
    // exercise row carries the "Calories" icon: both as the app designs them.
    std::map<CaloriesConsumedWidgetStatType, CaloriesConsumedWidgetStat> stats() const;

    friend bool operator==(const CaloriesConsumedWidgetViewModel&,
                           const CaloriesConsumedWidgetViewModel&) = default;
};

}  // namespace qrv::widget
