#pragma once
// One statistics row of the calories widget: an icon, the row's title and its
// figure, as the main app wrote them ("Base Goal  1,500"). The figure carries
// an accessibility identifier made from the title so that UI tests can find
// it whatever the figure reads.
#include <string>
#include <string_view>

#include "Platform/drawing/View.hpp"
#include "Widget/Calories/CaloriesConsumedWidgetStat.hpp"

namespace qrv::widget {

struct WidgetStatView {
    std::string title;
    // The name of one of the widget's icons.
    std::string icon;
    std::string value;
    // False leaves the title out (icon and figure only).
    bool displaysTitle = true;

    static WidgetStatView from(const CaloriesConsumedWidgetStat& stat, bool displaysTitle = true) {
        return WidgetStatView{stat.title, stat.icon, stat.value, displaysTitle};
    }

    // "EnergyStatsView_" + the title with every whitespace character removed + "_value".
    static std::string valueAccessibilityIdentifier(std::string_view title);

    static constexpr double kIconSize = 16;
    static constexpr double kSpacing = 6;

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view
};

}  // namespace qrv::widget
