#pragma once
// printf-style formatting with the platform's locale-aware rules: %d, %i, %u
// (with any length modifier) are written by the locale's decimal number
// formatter, so they carry its grouping ("1.234" in German); %x, %X and %o are
// not localized; %@ and %s take a text; %f, %e, %g use the locale's decimal
// separator. Positional arguments ("%2$@") are accepted, as translators need
// them to reorder a sentence.
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "Platform/locale/Locale.hpp"

namespace qrv::platform {

class FormatArgument {
  public:
    using Value = std::variant<std::int64_t, double, std::string>;

    template <std::integral T>
    requires(!std::same_as<T, bool>) FormatArgument(T value) : value_(static_cast<std::int64_t>(value)) {}
    FormatArgument(double value) : value_(value) {}
    FormatArgument(std::string value) : value_(std::move(value)) {}
    FormatArgument(std::string_view value) : value_(std::string(value)) {}
    FormatArgument(const char* value) : value_(std::string(value)) {}

    const Value& value() const { return value_; }

  private:
    Value value_;
};

// Formats with the given locale. A conversion without a matching argument, or
// one this formatter does not know, is copied to the output as written; a text
// without placeholders comes back unchanged whatever the arguments.
std::string localizedStringWithFormat(const Locale& locale, std::string_view format,
                                      std::span<const FormatArgument> arguments);

// Formats with the current locale.
inline std::string localizedStringWithFormat(std::string_view format,
                                             std::initializer_list<FormatArgument> arguments) {
    return localizedStringWithFormat(Locale::current(), format,
                                     std::span<const FormatArgument>(arguments.begin(), arguments.size()));
}

}  // namespace qrv::platform
