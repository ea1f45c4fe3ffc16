#pragma once
// What a data widget shows when the app has no signed-in user (or left the
// widget nothing to show): on the home screen a message on the widget's
// neutral ground; on the lock screen a bare "--" placeholder.
#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

#include <optional>
#include <string>

namespace qrv::widget {

struct WidgetLoggedOutView {
    // The message, already localized by the caller; shown verbatim. Absent
    // shows as an empty message (still on the ground, not "--").
    std::optional<std::string> errorText;
    // Overrides the family the view finds in its environment.
    std::optional<platform::WidgetFamily> sizeFamily;

    static constexpr double kMessagePadding = 20;

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view
};

}  // namespace qrv::widget
