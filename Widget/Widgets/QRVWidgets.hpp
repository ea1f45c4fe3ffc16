#pragma once
// The extension's entry: the bundle the widget host asks for its widgets. Its
// order is the order of the widget gallery.
#include <vector>

#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::widget {

struct QRVWidgets {
    // The widgets offered on a phone running `systemVersion` (its major
    // version): water, calories, macronutrients; before 17 without water.
    std::vector<WidgetConfiguration> body(int systemVersion) const;
};

}  // namespace qrv::widget
