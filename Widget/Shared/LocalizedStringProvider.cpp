#include "Widget/Shared/LocalizedStringProvider.hpp"

#include "Platform/locale/StringCatalog.hpp"

namespace qrv::widget {

std::string localizedString(std::string_view key, std::string_view comment) {
    return platform::localizedString(key, comment);
}

std::string localizedStringWithFormat(std::string_view format,
                                      std::initializer_list<platform::FormatArgument> arguments) {
    return platform::localizedStringWithFormat(format, arguments);
}

}  // namespace qrv::widget
