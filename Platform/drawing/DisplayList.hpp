#pragma once
// DisplayList: a recorded picture as plain values, plus what the widget host
// needs besides pixels (tap targets, texts, accessibility identifiers).
//
// Ops mirror the painter's state model and are played in order:
//   Save / Restore               push and pop the transform, clip and group state
//   Translate / Rotate / Scale   change the transform (applied to what follows)
//   ClipPath                     intersect the clip with a path (until Restore)
//   PushGroup ... PopGroup       draw into a layer, then composite it with an opacity
//   PushGroup ... PushMask ... PopMask
//                                draw content, then a mask; the content shows
//                                where the mask is opaque
//   FillPath / StrokePath / DrawText / DrawImage
//   BeginWidgetGroup ... EndWidgetGroup
//                                the ops between belong to an accent group or
//                                the container background (nested; recorded only
//                                when the rendering mode is not full colour, and
//                                painted as nothing: the rendering mode reads them)
// Coordinates are absolute widget points: layout has already placed
// everything, and transform ops appear only for rotation and scale effects.
// Colours keep both variants; the painter resolves them with the colour scheme.
//
// Rectangles in hit regions, texts and accessibility elements are the
// axis-aligned bounds of the element after any transform.
#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"
#include "Platform/drawing/Geometry.hpp"
#include "Platform/drawing/Path.hpp"
#include "Platform/drawing/View.hpp"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace qrv::platform {

namespace op {

struct Save {
    friend bool operator==(const Save&, const Save&) = default;
};
struct Restore {
    friend bool operator==(const Restore&, const Restore&) = default;
};
struct Translate {
    double dx = 0, dy = 0;
    friend bool operator==(const Translate&, const Translate&) = default;
};
struct Rotate {
    double radians = 0;  // clockwise on the screen
    friend bool operator==(const Rotate&, const Rotate&) = default;
};
struct Scale {
    double sx = 1, sy = 1;
    friend bool operator==(const Scale&, const Scale&) = default;
};
struct ClipPath {
    Path path{};
    FillRule rule = FillRule::nonZero;
    friend bool operator==(const ClipPath&, const ClipPath&) = default;
};
struct PushGroup {
    friend bool operator==(const PushGroup&, const PushGroup&) = default;
};
struct PopGroup {
    double opacity = 1;
    friend bool operator==(const PopGroup&, const PopGroup&) = default;
};
struct PushMask {
    friend bool operator==(const PushMask&, const PushMask&) = default;
};
struct PopMask {
    friend bool operator==(const PopMask&, const PopMask&) = default;
};
struct FillPath {
    Path path{};
    Color color{};
    FillRule rule = FillRule::nonZero;
    friend bool operator==(const FillPath&, const FillPath&) = default;
};
struct StrokePath {
    Path path{};
    Color color{};
    StrokeStyle style{};
    friend bool operator==(const StrokePath&, const StrokePath&) = default;
};
// One line of text, unwrapped. `origin` is the top-left corner of the line
// box; `baseline` the y of the baseline. `font` is the final (shrunk) font and
// `width` the measured advance, so a painter can check it agrees. The line's
// letters decide which way it runs; `direction` is taken by a line without
// any (digits and signs alone), as the layout around it runs.
struct DrawText {
    std::string text{};
    Font font{};
    Color color{};
    Point origin{};
    double baseline = 0;
    double width = 0;
    LayoutDirection direction = LayoutDirection::leftToRight;
    friend bool operator==(const DrawText&, const DrawText&) = default;
};
// An icon fitted into `rect` (keeping its aspect ratio, centred). With a
// tint, the icon is a silhouette filled with the tint; with `luminance` too,
// the icon's luminance is the tint's alpha (a desaturated icon). `accentedMode`
// is the image's accented rendering mode, for the rendering mode to read.
struct DrawImage {
    std::string name{};
    Rect rect{};
    std::optional<Color> tint{};
    bool luminance = false;
    WidgetAccentedRenderingMode accentedMode = WidgetAccentedRenderingMode::desaturated;
    friend bool operator==(const DrawImage&, const DrawImage&) = default;
};
struct BeginWidgetGroup {
    WidgetGroup group = WidgetGroup::accent;
    friend bool operator==(const BeginWidgetGroup&, const BeginWidgetGroup&) = default;
};
struct EndWidgetGroup {
    friend bool operator==(const EndWidgetGroup&, const EndWidgetGroup&) = default;
};

}  // namespace op

using DrawOp =
    std::variant<op::Save, op::Restore, op::Translate, op::Rotate, op::Scale, op::ClipPath, op::PushGroup,
                 op::PopGroup, op::PushMask, op::PopMask, op::FillPath, op::StrokePath, op::DrawText,
                 op::DrawImage, op::BeginWidgetGroup, op::EndWidgetGroup>;

struct LinkTarget {
    std::string url{};
    friend bool operator==(const LinkTarget&, const LinkTarget&) = default;
};

// A rectangle that reacts to taps: a link or a button running an intent.
struct HitRegion {
    Rect rect{};
    std::variant<LinkTarget, IntentInvocation> target{};
    friend bool operator==(const HitRegion&, const HitRegion&) = default;
};

// A text as drawn: the text given, what is shown (lines joined by "\n",
// truncated with "…"), where, the final font size, and the accessibility
// identifier of the nearest enclosing element that has one.
struct DrawnText {
    std::string text{};
    std::string shown{};
    Rect rect{};
    std::string accessibilityIdentifier{};
    double fontSize = 0;
    bool truncated = false;
    friend bool operator==(const DrawnText&, const DrawnText&) = default;
};

// A view carrying an accessibility identifier; `label` is the texts drawn
// inside it, joined by spaces.
struct AccessibilityElement {
    std::string identifier{};
    Rect rect{};
    std::string label{};
    friend bool operator==(const AccessibilityElement&, const AccessibilityElement&) = default;
};

struct DisplayList {
    Size size{};
    std::vector<DrawOp> ops{};
    std::vector<HitRegion> hitRegions{};  // in drawing order: later ones lie on top
    std::optional<std::string> widgetURL{};
    std::vector<DrawnText> texts{};
    std::vector<AccessibilityElement> accessibility{};

    // The target of a tap at `p`: the topmost hit region containing it, else
    // the widget URL, else nothing.
    std::optional<std::variant<LinkTarget, IntentInvocation>> targetAt(Point p) const;

    friend bool operator==(const DisplayList&, const DisplayList&) = default;
};

// Stable text: one op per line, indented by Save/Push nesting, numbers with
// two decimals, colours as #RRGGBBAA (light/dark when they differ) and their
// palette name. Hit regions, the widget URL, texts and accessibility elements
// follow the ops in their own sections.
std::string toText(const DisplayList& list);

}  // namespace qrv::platform
