#pragma once
// A clear layer over the whole medium water widget that opens the app at the
// medium widget's deep link. Laid beneath the log button, it makes every spot
// that is not the button an explicit tap target for the same link as the
// widget's URL, so a tap beside the button (or on the glass) never falls
// through to nothing. The small widget is a single tap target on the phone
// (links inside it are not supported), so there it draws nothing and the
// widget's URL alone applies. No fields: it reads the family from the
// environment.
#include <string>

#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

namespace qrv::widget {

struct WidgetOverlayButton {
    // "qrv://qrv/widgets/water_medium" for the medium widget, "..._small" otherwise.
    static std::string deepLink(platform::WidgetFamily family);

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view
};

}  // namespace qrv::widget
