#pragma once
// The stat rows of the larger calories widget: base goal, food and exercise,
// each a title, an icon and a value, all taken ready-made from the record.
#include <optional>
#include <string>

namespace qrv::widget {

// Raw values 0, 1, 2; the views draw the rows in this order.
enum class CaloriesConsumedWidgetStatType : int { baseGoal = 0, food = 1, exercise = 2 };

// Nothing outside 0...2.
constexpr std::optional<CaloriesConsumedWidgetStatType> caloriesConsumedWidgetStatType(int rawValue) {
    if (rawValue < 0 || rawValue > 2) return std::nullopt;
    return static_cast<CaloriesConsumedWidgetStatType>(rawValue);
}

constexpr int rawValue(CaloriesConsumedWidgetStatType type) { return static_cast<int>(type); }

struct CaloriesConsumedWidgetStat {
    std::string title;
    // The name of an image among the widget's own icons.
    std::string icon;
    std::string value;

    friend bool operator==(const CaloriesConsumedWidgetStat&, const CaloriesConsumedWidgetStat&) = default;
};

}  // namespace qrv::widget
