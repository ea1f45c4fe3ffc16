#pragma once
// A clear layer over the whole water widget that opens the app at the deep
// link of the widget's size. Laid beneath the log button, it makes every spot
// that is not the button an explicit tap target for the same link as the
// widget's URL, so a tap next to the button never falls through to nothing.
// No fields: the link comes from the widget family in the environment.
#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

#include <string>

namespace qrv::widget {

struct WidgetOverlayButton {
    // "qrv://qrv/widgets/water_medium" for the medium widget, "..._small" otherwise.
    static std::string deepLink(platform::WidgetFamily family);

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view
};

}  // namespace qrv::widget
