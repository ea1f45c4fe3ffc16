#pragma once
// The devices the host plays: how large each widget family is there, the kind
// of device the fonts ask about, the system version, and the content margins
// the platform puts around a widget that does not disable them.
//
// On the tablet a widget is laid out at a larger canvas size and the result
// scaled down to its size on the screen; on the phone both are the same.
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/drawing/Geometry.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"

namespace qrv::host {

struct FamilySize {
    platform::Size layout;   // what the views are offered
    platform::Size display;  // what the widget occupies on the screen

    double scaleX() const { return layout.width > 0 ? display.width / layout.width : 1; }
    double scaleY() const { return layout.height > 0 ? display.height / layout.height : 1; }
    bool isScaled() const { return layout != display; }
    friend bool operator==(const FamilySize&, const FamilySize&) = default;
};

struct DeviceProfile {
    std::string name;         // "phone" or "pad", as --device takes it
    std::string description;  // for people: "6.1-inch phone"
    catalog::DeviceIdiom idiom = catalog::DeviceIdiom::phone;
    int systemVersion = 17;
    std::vector<std::pair<platform::WidgetFamily, FamilySize>> sizes;

    // Nothing for a family the device does not show.
    std::optional<FamilySize> size(platform::WidgetFamily family) const;

    // The margins the platform keeps free inside a widget that leaves them on:
    // the 16-point design margin on the home screen, a tighter 6 points on the
    // lock screen, where the widgets are small and the platform uses smaller
    // margins. None when the widget disables them.
    platform::EdgeInsets contentMargins(platform::WidgetFamily family, bool marginsDisabled) const;

    // The reference 6.1-inch phone: small 158×158, medium 338×158, large
    // 338×354, circular 72×72, rectangular 160×72, inline 234×26.
    static DeviceProfile phone(int systemVersion = 17);
    // The reference 11-inch tablet: laid out at 155×155 / 342×155 / 342×342 /
    // 715.5×342, shown at 136×136 / 300×136 / 300×300 / 628×300; its lock
    // screen takes the phone's accessory sizes, unscaled.
    static DeviceProfile pad(int systemVersion = 17);
    // "phone" or "pad"; nothing for any other name.
    static std::optional<DeviceProfile> named(std::string_view name, int systemVersion = 17);
    static std::vector<std::string_view> names() { return {"phone", "pad"}; }
};

inline constexpr double kHomeScreenContentMargin = 16;
inline constexpr double kLockScreenContentMargin = 6;

}  // namespace qrv::host
