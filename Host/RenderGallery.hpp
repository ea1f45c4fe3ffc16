#pragma once
// Rendering the whole gallery into a directory: for each widget offered and
// each family it supports on the device, the provider is asked for its
// timeline as the widget host asks (all requests at once; whatever has not
// answered by the end of the wait shows its placeholder, as on the phone), and
// the entry shown now and the one that takes over at the next midnight are
// drawn in each appearance and colour scheme to PNG and SVG. manifest.json and index.html
// describe the result.
#include <chrono>
#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Host/DeviceProfile.hpp"
#include "Host/Manifest.hpp"
#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/WidgetRenderingMode.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::host {

struct GalleryOptions {
    std::filesystem::path out;
    DeviceProfile device = DeviceProfile::phone();
    // Empty: every widget offered, every family each supports.
    std::vector<std::string> widgets;  // kinds or the host's short names
    std::vector<platform::WidgetFamily> families;
    std::vector<platform::ColorScheme> schemes{platform::ColorScheme::light, platform::ColorScheme::dark};
    // Each family is drawn in every appearance that shows it on the device;
    // a placement with a scheme of its own is drawn in that scheme alone.
    std::vector<Appearance> appearances{Appearance::homeScreen};
    platform::Rgba tint = platform::RenderingModeStyle::defaultWidgetTint();  // the tinted home screen's
    double scale = 2;                                                         // PNG pixels per point
    std::chrono::milliseconds wait{2000};
    std::string language = "en";  // of a page whose images record no locale
    unsigned workers = 0;          // threads that paint and encode; 0: one per core
    bool progressLine = false;     // one updating line (a terminal) instead of a line per image
};

// One cell of a render matrix: a device and system version, a language and
// the schemes, drawn into `folder` (relative to the gallery; empty: its top).
struct GalleryCell {
    DeviceProfile device = DeviceProfile::phone();
    std::string locale;  // empty: the environment's
    std::vector<platform::ColorScheme> schemes{platform::ColorScheme::light, platform::ColorScheme::dark};
    std::filesystem::path folder;
    std::vector<widget::WidgetConfiguration> widgets;  // offered on the cell's system version, in gallery order
};

// A file that could not be written or an image that could not be drawn.
class GalleryError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The chosen widgets and families leave nothing to draw; nothing is written.
class NothingToDraw : public GalleryError {
  public:
    using GalleryError::GalleryError;
};

struct GalleryResult {
    Manifest manifest;
    std::filesystem::path index;
};

// `widgets` are the bundle's widgets for the device's system version, in
// gallery order. Progress goes to `progress`, one line per image. Throws
// GalleryError (NothingToDraw before writing anything).
GalleryResult renderGallery(const std::vector<widget::WidgetConfiguration>& widgets, const GalleryOptions& options,
                            const widget::WidgetDataCacheReaderEnvironment& environment, std::ostream& progress);

// Every cell into one gallery: one manifest.json at the top, an index.html in
// each cell's folder (and at the top, one linking to them). `options` gives
// what all cells share (out, widgets, families, scale, wait, workers);
// providers are asked per cell, on the calling thread's main queue, while
// painting and encoding run on a pool of `options.workers` threads.
GalleryResult renderMatrix(const std::vector<GalleryCell>& cells, const GalleryOptions& options,
                           const widget::WidgetDataCacheReaderEnvironment& environment, std::ostream& progress);

// Whether `name` names the widget: its kind or the host's short name for it.
bool namesWidget(const widget::WidgetConfiguration& widget, std::string_view name);

}  // namespace qrv::host
