#pragma once
// What the platform does to every widget's recorded picture where it shows
// it: one transformation of a display list per rendering mode, so widgets
// never imitate the modes themselves; they only mark their accent group
// (widgetAccentable) and their container background.
//
//   fullColor  the list as recorded
//   accented   every op takes its group's colour and keeps its own alpha (views
//              act as template images): the accent group the tint, the default
//              group a light (dark-scheme) or deep (light-scheme) shade of it,
//              the container background the tinted material; images follow
//              their accented rendering mode
//   vibrant    a monochrome version: each colour's luminance decides how
//              strongly it shows over the material behind (white, or red in
//              StandBy's low light); images show by their luminance
//
// The container background is left out while recording wherever the
// environment hides it (vibrant, StandBy, the pad's lock screen).
#include "Platform/drawing/DisplayList.hpp"

namespace qrv::platform {

struct RenderingModeStyle {
    WidgetRenderingMode mode = WidgetRenderingMode::fullColor;
    // The person's chosen tint for the accented mode.
    Rgba tint = defaultWidgetTint();
    // Vibrant in low light (StandBy at night): red instead of white.
    bool lowLight = false;

    // A warm gold, the tint a tinted home screen starts with.
    static constexpr Rgba defaultWidgetTint() { return {0.95, 0.76, 0.30, 1}; }
};

DisplayList applyRenderingMode(DisplayList list, const RenderingModeStyle& style);

// "#rrggbb" (or "rrggbb") as a colour, for a tint given by a person.
std::optional<Rgba> parseHexColor(std::string_view text);

}  // namespace qrv::platform
