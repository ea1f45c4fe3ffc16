#pragma once
// The macronutrients widget: carbohydrates, fat and protein against their
// goals, on the home screen (medium) and the lock screen (inline, rectangular).
// Wherever it is tapped it opens the app's macronutrient screen.
#include <optional>
#include <string_view>

#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::widget {

struct MacronutrientsWidget {
    static constexpr std::string_view kind = "com.qrv.widget.Macronutrients";
    static constexpr std::string_view displayNameKey = "widget.Macronutrients.displayName";
    static constexpr std::string_view descriptionKey = "widget.Macronutrients.description";
    static constexpr std::string_view widgetURL = "qrv://qrv/widgets/macronutrients";

    std::optional<WidgetConfiguration> body(int systemVersion) const;

    static WidgetContent content(const MacronutrientsDataEntry& entry, platform::WidgetFamily family);
};

}  // namespace qrv::widget
