#pragma once
// The calories widget: the day's calories against the goal, on the home screen
// (small, medium) and the lock screen (inline, circular). Its views know a
// rectangular lock-screen layout too, but the widget does not offer it.
#include <optional>
#include <string_view>

#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::widget {

struct CaloriesConsumedWidget {
    static constexpr std::string_view kind = "com.qrv.widget.CaloriesConsumed";
    static constexpr std::string_view displayNameKey = "widget.CaloriesConsumed.displayName";
    static constexpr std::string_view descriptionKey = "widget.CaloriesConsumed.description";

    // The configuration on a phone running `systemVersion`.
    std::optional<WidgetConfiguration> body(int systemVersion) const;

    // The content view over a view model of the entry.
    static WidgetContent content(const CaloriesConsumedDataEntry& entry, platform::WidgetFamily family);
};

}  // namespace qrv::widget
