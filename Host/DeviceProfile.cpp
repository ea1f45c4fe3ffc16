#include "Host/DeviceProfile.hpp"

#include <algorithm>

namespace qrv::host {

using platform::Size;
using platform::WidgetFamily;

namespace {

FamilySize same(double width, double height) { return FamilySize{{width, height}, {width, height}}; }

// The lock screen's families are the same size on both devices.
void addAccessories(DeviceProfile& profile) {
    profile.sizes.emplace_back(WidgetFamily::accessoryCircular, same(72, 72));
    profile.sizes.emplace_back(WidgetFamily::accessoryRectangular, same(160, 72));
    profile.sizes.emplace_back(WidgetFamily::accessoryInline, same(234, 26));
}

}  // namespace

std::string_view appearanceName(Appearance appearance) {
    switch (appearance) {
        case Appearance::homeScreen:
            return "default";
        case Appearance::tinted:
            return "tinted";
        case Appearance::standBy:
            return "standby";
        case Appearance::standByNight:
            return "standby-night";
        case Appearance::lockScreen:
            return "lock-screen";
    }
    return "default";
}

std::optional<Appearance> appearanceNamed(std::string_view name) {
    for (auto appearance : kAllAppearances)
        if (appearanceName(appearance) == name) return appearance;
    return std::nullopt;
}

std::string_view renderingModeName(platform::WidgetRenderingMode mode) {
    switch (mode) {
        case platform::WidgetRenderingMode::fullColor:
            return "fullColor";
        case platform::WidgetRenderingMode::accented:
            return "accented";
        case platform::WidgetRenderingMode::vibrant:
            return "vibrant";
    }
    return "fullColor";
}

std::optional<WidgetPlacement> DeviceProfile::placement(Appearance appearance, WidgetFamily family) const {
    const auto familySize = size(family);
    if (!familySize) return std::nullopt;
    using platform::WidgetRenderingMode;
    WidgetPlacement lock{appearance, WidgetRenderingMode::vibrant, false, false, std::nullopt, 1};
    const bool phone = idiom == catalog::DeviceIdiom::phone;
    switch (appearance) {
        case Appearance::homeScreen:
            if (platform::isAccessory(family)) return lock;
            return WidgetPlacement{.appearance = appearance};
        case Appearance::tinted:
            if (platform::isAccessory(family) || systemVersion < 18) return std::nullopt;
            return WidgetPlacement{.appearance = appearance, .renderingMode = WidgetRenderingMode::accented};
        case Appearance::standBy:
        case Appearance::standByNight: {
            if (!phone || systemVersion < 17 || family != WidgetFamily::systemSmall) return std::nullopt;
            // On its side the screen's height is the upright width. How large
            // the platform draws the pair is not published: filling the height
            // less a margin of 24 points above and below looks as it should.
            const double scale = (std::min(screen.width, screen.height) - 48) / familySize->display.height;
            const bool night = appearance == Appearance::standByNight;
            return WidgetPlacement{appearance,
                                   night ? WidgetRenderingMode::vibrant : WidgetRenderingMode::fullColor,
                                   false,
                                   night,
                                   platform::ColorScheme::dark,
                                   scale};
        }
        case Appearance::lockScreen:
            if (!platform::isAccessory(family) &&
                (phone || family != WidgetFamily::systemSmall || systemVersion < 17))
                return std::nullopt;
            // The wallpaper behind the lock screen is taken to be dark, as
            // it is in the gallery: light content on it.
            lock.scheme = platform::ColorScheme::dark;
            return lock;
    }
    return std::nullopt;
}

std::optional<FamilySize> DeviceProfile::size(WidgetFamily family) const {
    for (const auto& [each, size] : sizes)
        if (each == family) return size;
    return std::nullopt;
}

platform::EdgeInsets DeviceProfile::contentMargins(WidgetFamily family, bool marginsDisabled) const {
    if (marginsDisabled) return {};
    return platform::EdgeInsets::all(platform::isAccessory(family) ? kLockScreenContentMargin
                                                                   : kHomeScreenContentMargin);
}

DeviceProfile DeviceProfile::phone(int systemVersion) {
    DeviceProfile profile{"phone", "6.1-inch phone", catalog::DeviceIdiom::phone, systemVersion,
                          {},      {393, 852}};
    profile.sizes.emplace_back(WidgetFamily::systemSmall, same(158, 158));
    profile.sizes.emplace_back(WidgetFamily::systemMedium, same(338, 158));
    profile.sizes.emplace_back(WidgetFamily::systemLarge, same(338, 354));
    addAccessories(profile);
    return profile;
}

DeviceProfile DeviceProfile::pad(int systemVersion) {
    DeviceProfile profile{"pad", "11-inch tablet", catalog::DeviceIdiom::pad, systemVersion, {}, {834, 1194}};
    profile.sizes.emplace_back(WidgetFamily::systemSmall, FamilySize{Size{155, 155}, Size{136, 136}});
    profile.sizes.emplace_back(WidgetFamily::systemMedium, FamilySize{Size{342, 155}, Size{300, 136}});
    profile.sizes.emplace_back(WidgetFamily::systemLarge, FamilySize{Size{342, 342}, Size{300, 300}});
    profile.sizes.emplace_back(WidgetFamily::systemExtraLarge, FamilySize{Size{715.5, 342}, Size{628, 300}});
    addAccessories(profile);
    return profile;
}

std::optional<DeviceProfile> DeviceProfile::named(std::string_view name, int systemVersion) {
    if (name == "phone") return phone(systemVersion);
    if (name == "pad") return pad(systemVersion);
    return std::nullopt;
}

}  // namespace qrv::host
