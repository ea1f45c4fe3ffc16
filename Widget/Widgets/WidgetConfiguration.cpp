#include "Widget/Widgets/WidgetConfiguration.hpp"

#include <algorithm>

#include "Platform/locale/StringCatalog.hpp"

namespace qrv::widget {

bool WidgetConfiguration::supports(platform::WidgetFamily family) const {
    return std::find(families_.begin(), families_.end(), family) != families_.end();
}

// The platform resolves these keys itself, without a default: a missing
// entry shows as the key.
std::string WidgetConfiguration::displayName() const { return platform::localizedString(displayNameKey_); }
std::string WidgetConfiguration::description() const { return platform::localizedString(descriptionKey_); }

std::vector<platform::WidgetFamily> joinedFamilies(std::vector<platform::WidgetFamily> homeScreen,
                                                   const std::vector<platform::WidgetFamily>& lockScreen) {
    homeScreen.insert(homeScreen.end(), lockScreen.begin(), lockScreen.end());
    return homeScreen;
}

WidgetContent emptyWidgetContent() {
    return WidgetContent{[] { return platform::View(platform::EmptyView()); }, nullptr};
}

}  // namespace qrv::widget
