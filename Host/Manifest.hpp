#pragma once
// The record of a rendered gallery, written beside the images as
// manifest.json: the device and moment it was drawn for, the widgets in
// gallery order, and for each image the entry it shows, its files and size,
// everything a tap can reach on it and every text drawn on it.
#include <optional>
#include <string>
#include <vector>

#include "Host/DeviceProfile.hpp"
#include "Host/TapRules.hpp"
#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/DisplayList.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/Date.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

namespace qrv::host {

struct ManifestWidget {
    std::string kind;
    std::string displayName;
    std::string description;
    std::vector<platform::WidgetFamily> families;
};

struct ManifestText {
    std::optional<std::string> id;  // the accessibility identifier, where the text has one
    std::string text;               // as given to the view
    std::string shown;              // as drawn: lines joined by "\n", "…" where cut short
    platform::Rect rect;
};

// Where an image's entry stands in its timeline.
enum class EntryMoment { now, nextMidnight };

struct ManifestImage {
    std::string kind;
    platform::WidgetFamily family = platform::WidgetFamily::systemSmall;
    platform::ColorScheme scheme = platform::ColorScheme::light;
    Appearance appearance = Appearance::homeScreen;
    platform::WidgetRenderingMode renderingMode = platform::WidgetRenderingMode::fullColor;
    bool showsContainerBackground = true;
    std::optional<std::string> tint;  // "#rrggbb", in the accented mode
    platform::Date entryDate;
    EntryMoment moment = EntryMoment::now;
    bool placeholder = false;  // the provider did not answer in time
    // Where in a render matrix the image sits; the manifest's own fields name
    // the first cell.
    std::string device;
    int systemVersion = 17;
    std::string locale;
    std::string png;  // file names relative to the manifest, in the cell's sub-folder
    std::string svg;
    platform::Size size;  // in screen points
    std::optional<std::string> widgetURL;
    std::vector<LinkRegion> links;
    std::vector<ButtonRegion> buttons;
    std::vector<ManifestText> texts;

    // Tap targets and texts of a drawn widget, under the platform's tap rules.
    void describe(const platform::DisplayList& list, const TapRules& rules);
};

struct Manifest {
    std::string device;  // "phone" or "pad"
    int systemVersion = 17;
    std::string locale;  // of the texts and number formats, e.g. "de_DE"
    platform::Date now;
    std::vector<ManifestWidget> widgets;
    std::vector<ManifestImage> images;

    // Dates as ISO 8601 in `calendar`'s zone; rectangles as {x, y, width, height}.
    std::string toJSON(const platform::Calendar& calendar) const;
};

std::string_view schemeName(platform::ColorScheme scheme);
std::string hexColor(platform::Rgba color);  // "#rrggbb"
std::string_view momentName(EntryMoment moment);

}  // namespace qrv::host
