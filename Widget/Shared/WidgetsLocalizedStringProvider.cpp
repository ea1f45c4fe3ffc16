#include "Widget/Shared/WidgetsLocalizedStringProvider.hpp"

namespace qrv::widget {

std::string WidgetsLocalizedStringProvider::localizedString(std::string_view key,
                                                            std::string_view comment) const {
    return widget::localizedString(key, comment);
}

LocalizedStringProviderRef WidgetsLocalizedStringProvider::shared() {
    static const LocalizedStringProviderRef instance =
        std::make_shared<const WidgetsLocalizedStringProvider>();
    return instance;
}

}  // namespace qrv::widget
