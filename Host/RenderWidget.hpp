#pragma once
// Drawing one widget entry as the widget host does: the content view is laid
// out at the family's size on the device (inside the content margins unless
// the widget disables them), laid out again while the view still measures
// itself (at most three passes), recorded, and on the tablet scaled down from
// the canvas to the widget's size on the screen. The result is a display list
// in screen points: pixels come from the painter, tap targets from TapRules.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Host/DeviceProfile.hpp"
#include "Platform/drawing/CairoPainter.hpp"
#include "Platform/drawing/WidgetRenderingMode.hpp"
#include "Platform/timeline/Timeline.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::host {

inline constexpr int kMaxLayoutPasses = 3;

struct RenderedWidget {
    platform::DisplayList displayList;  // in screen points
    FamilySize size;
    int layoutPasses = 1;
};

class WidgetRenderer {
  public:
    // The painter measures the text; it must outlive the renderer.
    WidgetRenderer(const platform::Painter& painter, DeviceProfile device)
        : painter_(painter), device_(std::move(device)) {}

    const DeviceProfile& device() const { return device_; }

    // Nothing when the device has no such family. The placement's rendering
    // mode (with `tint` when accented) is applied to the recorded list, and
    // its scale after the device's.
    std::optional<RenderedWidget> render(
        const widget::WidgetConfiguration& widget, const widget::WidgetEntry& entry,
        platform::WidgetFamily family, platform::ColorScheme scheme, const WidgetPlacement& placement = {},
        platform::Rgba tint = platform::RenderingModeStyle::defaultWidgetTint()) const;

  private:
    const platform::Painter& painter_;
    DeviceProfile device_;
};

// The list drawn `sx` × `sy` as large: every op, tap region, text and
// accessibility rectangle.
platform::DisplayList scaledDisplayList(const platform::DisplayList& list, double sx, double sy);

// The list as the platform draws a placeholder: every text a rounded bar in
// a faint shade of its colour, so nothing legible (and no text) remains.
platform::DisplayList redactedDisplayList(const platform::DisplayList& list);

// Which of a timeline's entries the widget shows at `now`: the latest whose
// date is not after now, or the first when all lie ahead. Nothing for an
// empty timeline.
std::optional<std::size_t> currentEntryIndex(const std::vector<widget::WidgetEntry>& entries, platform::Date now);

// Where the widget's icons are: Icons in the program's resource directory.
std::filesystem::path widgetIconDirectory();

// The short name the host's commands use for a widget kind ("calories",
// "macronutrients", "water"); the kind's last part, lower-cased, for others.
std::string hostWidgetName(std::string_view kind);

}  // namespace qrv::host
