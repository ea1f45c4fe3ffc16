#pragma once
// Localized texts of the extension. Every user-visible text is looked up by key
// in the extension's string table with an empty default, so a key the table
// lacks shows as the key itself. View models hold a provider so that tests can
// substitute their own.
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "Platform/locale/StringFormat.hpp"

namespace qrv::widget {

class LocalizedStringProvider {
  public:
    virtual ~LocalizedStringProvider() = default;
    // The localized text for a key; the comment is for translators only.
    virtual std::string localizedString(std::string_view key, std::string_view comment) const = 0;
};

// View models keep their provider by shared, immutable reference.
using LocalizedStringProviderRef = std::shared_ptr<const LocalizedStringProvider>;

// The standard lookup: the extension's table in the current locale, the key
// itself when the table has no text for it.
std::string localizedString(std::string_view key, std::string_view comment = {});

// The second step of a formatted text: the looked-up format with the current
// locale's number formatting (%d of 1234 is "1,234" in English, "1.234" in
// German). A format without placeholders comes back unchanged.
std::string localizedStringWithFormat(std::string_view format,
                                      std::initializer_list<platform::FormatArgument> arguments);

}  // namespace qrv::widget
