#pragma once
// Recording: a laid-out tree becomes a DisplayList; render() does layout and
// recording in one go.
//
// What each view records:
//   Text            one DrawText per line, in the environment's foreground colour
//   shapes, colours FillPath or StrokePath of the outline in its frame
//   Image           DrawImage (tinted when tinted or a template image)
//   Divider         FillPath of its 1-point rectangle in the separator colour
//   background      the layer, then the view; overlay: the view, then the layer
//   mask            ClipPath when the mask is opaque fills or strokes (the
//                   strokes' outlines are built here), else PushGroup/PushMask
//   opacity         PushGroup ... PopGroup(opacity) (nothing at all at 0)
//   rotation, scale Save, Translate(pivot), Rotate|Scale, Translate(-pivot) ... Restore
//   offset          Save, Translate(x, y) ... Restore
//   Link, Button    a hit region over their frame, then their label
//   widgetAccentable, removable and container backgrounds
//                   BeginWidgetGroup ... EndWidgetGroup, unless in full colour;
//                   backgrounds not at all where the environment hides them
//   widgetURL       the display list's widget URL (the last one drawn wins)
// Texts drawn inside a mask are not listed: they only shape the mask.
#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/Layout.hpp"

namespace qrv::platform {

struct RenderOptions {
    Size size{};
    ColorScheme colorScheme = ColorScheme::light;
    WidgetFamily widgetFamily = WidgetFamily::systemSmall;
    LayoutDirection layoutDirection = LayoutDirection::leftToRight;  // the locale's
    EdgeInsets contentMargins{};
    // False where the host removes the container background (e.g. in StandBy).
    bool showsContainerBackground = true;
    WidgetRenderingMode renderingMode = WidgetRenderingMode::fullColor;
    const ImageSizer* images = nullptr;

    Environment environment() const {
        Environment e{};
        e.colorScheme = colorScheme;
        e.widgetFamily = widgetFamily;
        e.widgetRenderingMode = renderingMode;
        e.showsWidgetContainerBackground = showsContainerBackground;
        e.layoutDirection = layoutDirection;
        return e;
    }
};

// The container background is recorded when both `showsContainerBackground`
// and the tree's environment allow it.
DisplayList record(const LayoutTree& tree, bool showsContainerBackground = true);

DisplayList render(const View& view, const RenderOptions& options, const TextMeasurer& measurer);

}  // namespace qrv::platform
