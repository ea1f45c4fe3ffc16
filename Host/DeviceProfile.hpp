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
#include "Platform/drawing/View.hpp"
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

// Where on the device a widget is seen, as `render --appearance` names it:
// the home screen as designed, the tinted home screen (system 18), StandBy
// by day and at night (the phone on its side, system 17), the lock screen.
enum class Appearance { homeScreen, tinted, standBy, standByNight, lockScreen };
inline constexpr Appearance kAllAppearances[] = {Appearance::homeScreen, Appearance::tinted,
                                                 Appearance::standBy, Appearance::standByNight,
                                                 Appearance::lockScreen};
// "default", "tinted", "standby", "standby-night", "lock-screen".
std::string_view appearanceName(Appearance appearance);
std::optional<Appearance> appearanceNamed(std::string_view name);
std::string_view renderingModeName(platform::WidgetRenderingMode mode);

// How the platform draws one family in one appearance.
struct WidgetPlacement {
    Appearance appearance = Appearance::homeScreen;
    platform::WidgetRenderingMode renderingMode = platform::WidgetRenderingMode::fullColor;
    bool showsContainerBackground = true;
    bool lowLight = false;  // StandBy at night: the red tint
    // The scheme the placement always draws in (StandBy and the lock screen
    // show light content on a dark screen); unset: the one asked for.
    std::optional<platform::ColorScheme> scheme{};
    double scale = 1;  // StandBy draws small widgets this much larger
    friend bool operator==(const WidgetPlacement&, const WidgetPlacement&) = default;
};

struct DeviceProfile {
    std::string name;         // "phone" or "pad", as --device takes it
    std::string description;  // for people: "6.1-inch phone"
    catalog::DeviceIdiom idiom = catalog::DeviceIdiom::phone;
    int systemVersion = 17;
    std::vector<std::pair<platform::WidgetFamily, FamilySize>> sizes;
    platform::Size screen;  // upright, in points

    // Nothing for a family the device does not show.
    std::optional<FamilySize> size(platform::WidgetFamily family) const;

    // How `family` is drawn in `appearance`; nothing where the device does
    // not show it there. The lock-screen families are always vibrant without
    // their background (on the home screen appearance too, which shows them
    // as the lock screen); StandBy is the phone's, system 17 on, small
    // widgets only, background removed, scaled to the screen's height; the
    // tinted home screen needs system 18; the pad's lock screen adds the
    // small widget, vibrant.
    std::optional<WidgetPlacement> placement(Appearance appearance, platform::WidgetFamily family) const;

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
