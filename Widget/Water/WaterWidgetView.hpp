#pragma once
// The water widget's content on the home screen.
//
//   systemSmall   a panel: the water icon and title, "Today", the day's
//                 total, and the button that logs one increment
//   systemMedium  the same panel, 136 points wide, beside the glass
//                 (WaterLevelWidgetView) filling the rest
//
// A tap on the button logs water through the log-water intent without opening
// the app; a tap anywhere else opens the app at the deep link of the widget's
// size. Logged out, the shared logged-out view shows the model's message.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Geometry.hpp"
#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Water/WaterWidgetViewModel.hpp"

namespace qrv::widget {

struct WaterWidgetView {
    platform::ColorScheme colorScheme = platform::ColorScheme::light;
    platform::WidgetFamily sizeFamily = platform::WidgetFamily::systemSmall;
    // A reference type shared by the passes of one render: its glass keeps the
    // measurements between them.
    std::shared_ptr<WaterWidgetViewModel> viewModel;

    static constexpr double kPanelWidth = 136;
    static constexpr double kPanelPadding = 16;

    // "qrv://qrv/widgets/water_medium" for the medium widget, "..._small" otherwise.
    static std::string deepLink(platform::WidgetFamily family);

    // The total's colour: white in the dark, the primary text colour in the light.
    static platform::Color totalColor(platform::ColorScheme scheme);

    // The glass's two-pass layout (see WaterLevelWidgetView); nothing to do
    // unless the medium widget shows figures.
    bool afterLayout(const std::vector<std::pair<std::string, platform::Rect>>& preferences) const;

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view

  private:
    platform::View panel() const;
    platform::View logButton() const;
    bool showsGlass() const;
};

}  // namespace qrv::widget
