#pragma once
// The sizes and places a widget can be shown in: the home screen's system
// families and the lock screen's accessory families.
#include <array>
#include <optional>
#include <string_view>

namespace qrv::platform {

enum class WidgetFamily {
    systemSmall,
    systemMedium,
    systemLarge,
    systemExtraLarge,
    accessoryCircular,
    accessoryRectangular,
    accessoryInline,
};

inline constexpr std::array<WidgetFamily, 7> kAllWidgetFamilies{
    WidgetFamily::systemSmall,      WidgetFamily::systemMedium,      WidgetFamily::systemLarge,
    WidgetFamily::systemExtraLarge, WidgetFamily::accessoryCircular, WidgetFamily::accessoryRectangular,
    WidgetFamily::accessoryInline,
};

// The family's name as written in code and on the command line: "systemSmall", ...
constexpr std::string_view name(WidgetFamily family) {
    constexpr std::array<std::string_view, 7> names{
        "systemSmall",       "systemMedium",         "systemLarge",    "systemExtraLarge",
        "accessoryCircular", "accessoryRectangular", "accessoryInline"};
    return names[static_cast<std::size_t>(family)];
}

// Exactly one of the names above (case-sensitive); anything else is no family.
constexpr std::optional<WidgetFamily> widgetFamily(std::string_view text) {
    for (auto family : kAllWidgetFamilies)
        if (name(family) == text) return family;
    return std::nullopt;
}

// Lock-screen families draw without a container background and in one tint.
constexpr bool isAccessory(WidgetFamily family) {
    return family == WidgetFamily::accessoryCircular || family == WidgetFamily::accessoryRectangular ||
           family == WidgetFamily::accessoryInline;
}

}  // namespace qrv::platform
