#include "Host/DeviceProfile.hpp"

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
    DeviceProfile profile{"phone", "6.1-inch phone", catalog::DeviceIdiom::phone, systemVersion, {}};
    profile.sizes.emplace_back(WidgetFamily::systemSmall, same(158, 158));
    profile.sizes.emplace_back(WidgetFamily::systemMedium, same(338, 158));
    profile.sizes.emplace_back(WidgetFamily::systemLarge, same(338, 354));
    addAccessories(profile);
    return profile;
}

DeviceProfile DeviceProfile::pad(int systemVersion) {
    DeviceProfile profile{"pad", "11-inch tablet", catalog::DeviceIdiom::pad, systemVersion, {}};
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
