#pragma once
// The water widget: water drunk today, logged with a tap on its button without
// opening the app. Buttons that run code in a widget need system version 17, so
// on earlier systems the widget does not exist.
#include <optional>
#include <string_view>

#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::widget {

struct WaterWidget {
    static constexpr std::string_view kind = "com.qrv.widget.Water";
    static constexpr std::string_view displayNameKey = "widget.Water.displayName";
    static constexpr std::string_view descriptionKey = "widget.Water.description";

    // Nothing before system version 17.
    std::optional<WidgetConfiguration> body(int systemVersion) const;

    static WidgetContent content(const WaterDataEntry& entry, platform::WidgetFamily family,
                                 platform::ColorScheme scheme);
};

}  // namespace qrv::widget
