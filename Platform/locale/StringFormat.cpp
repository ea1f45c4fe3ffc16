#include "Platform/locale/StringFormat.hpp"

#include <cctype>
#include <cstdio>
#include <optional>
#include <vector>

#include "Platform/locale/NumberFormatter.hpp"
#include "Platform/locale/TextScanning.hpp"

namespace qrv::platform {
namespace {

enum class Length { none, hh, h, l, ll, other64 };

struct Placeholder {
    std::size_t position = 0;  // 1-based explicit argument, 0 when sequential
    std::string flags;
    std::optional<int> width;
    bool widthFromArgument = false;
    std::optional<int> precision;
    Length length = Length::none;
    char conversion = '\0';
};

bool hasFlag(const Placeholder& placeholder, char flag) { return placeholder.flags.find(flag) != std::string::npos; }

std::optional<std::int64_t> asInteger(const FormatArgument& argument) {
    if (const auto* i = std::get_if<std::int64_t>(&argument.value())) return *i;
    if (const auto* d = std::get_if<double>(&argument.value())) return static_cast<std::int64_t>(*d);
    return std::nullopt;
}

std::optional<double> asDouble(const FormatArgument& argument) {
    if (const auto* d = std::get_if<double>(&argument.value())) return *d;
    if (const auto* i = std::get_if<std::int64_t>(&argument.value())) return static_cast<double>(*i);
    return std::nullopt;
}

std::string asText(const FormatArgument& argument) {
    if (const auto* s = std::get_if<std::string>(&argument.value())) return *s;
    if (const auto* i = std::get_if<std::int64_t>(&argument.value())) return std::to_string(*i);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", std::get<double>(argument.value()));
    return buffer;
}

std::string pad(std::string text, const Placeholder& placeholder) {
    if (!placeholder.width) return text;
    const auto count = characterCount(text);
    const auto width = static_cast<std::size_t>(*placeholder.width);
    if (count >= width) return text;
    const std::string fill(width - count, ' ');
    return hasFlag(placeholder, '-') ? text + fill : fill + text;
}

// The C library's own rendering for conversions the locale does not touch.
std::string printfConversion(const Placeholder& placeholder, const char* lengthModifier, auto value) {
    std::string directive = "%" + placeholder.flags;
    if (placeholder.width) directive += std::to_string(*placeholder.width);
    if (placeholder.precision) directive += "." + std::to_string(*placeholder.precision);
    directive += lengthModifier;
    directive += placeholder.conversion;
    const int needed = std::snprintf(nullptr, 0, directive.c_str(), value);
    if (needed < 0) return {};
    std::string out(static_cast<std::size_t>(needed) + 1, '\0');
    std::snprintf(out.data(), out.size(), directive.c_str(), value);
    out.resize(static_cast<std::size_t>(needed));
    return out;
}

// Narrows the argument as a C vararg of the modifier's width would be read.
std::int64_t narrowSigned(std::int64_t value, Length length) {
    switch (length) {
        case Length::none:
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
        case Length::h:
            return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
        case Length::hh:
            return static_cast<std::int8_t>(static_cast<std::uint8_t>(value));
        default:
            return value;
    }
}

std::uint64_t narrowUnsigned(std::int64_t value, Length length) {
    const auto bits = static_cast<std::uint64_t>(value);
    switch (length) {
        case Length::none:
            return static_cast<std::uint32_t>(bits);
        case Length::h:
            return static_cast<std::uint16_t>(bits);
        case Length::hh:
            return static_cast<std::uint8_t>(bits);
        default:
            return bits;
    }
}

// Parses the directive that starts just after '%'. Returns the index just past
// the conversion character, or nothing when the directive is incomplete.
std::optional<std::size_t> parsePlaceholder(std::string_view format, std::size_t i, Placeholder& placeholder) {
    auto readNumber = [&](std::size_t& at) {
        int n = 0;
        while (at < format.size() && std::isdigit(static_cast<unsigned char>(format[at])) && n < 100000) {
            n = n * 10 + (format[at] - '0');
            ++at;
        }
        return n;
    };
    // Positional argument: digits followed by '$'.
    std::size_t probe = i;
    if (probe < format.size() && format[probe] >= '1' && format[probe] <= '9') {
        const int n = readNumber(probe);
        if (probe < format.size() && format[probe] == '$') {
            placeholder.position = static_cast<std::size_t>(n);
            i = probe + 1;
        }
    }
    while (i < format.size() && std::string_view("-+ 0#'").find(format[i]) != std::string_view::npos) {
        if (format[i] != '\'') placeholder.flags += format[i];  // grouping comes from the locale anyway
        ++i;
    }
    if (i < format.size() && format[i] == '*') {
        placeholder.widthFromArgument = true;
        ++i;
    } else if (i < format.size() && std::isdigit(static_cast<unsigned char>(format[i]))) {
        placeholder.width = readNumber(i);
    }
    if (i < format.size() && format[i] == '.') {
        ++i;
        placeholder.precision = readNumber(i);
    }
    if (format.substr(i, 2) == "hh") {
        placeholder.length = Length::hh;
        i += 2;
    } else if (format.substr(i, 2) == "ll") {
        placeholder.length = Length::ll;
        i += 2;
    } else if (i < format.size()) {
        switch (format[i]) {
            case 'h':
                placeholder.length = Length::h;
                ++i;
                break;
            case 'l':
                placeholder.length = Length::l;
                ++i;
                break;
            case 'q':
            case 'z':
            case 't':
            case 'j':
            case 'L':
                placeholder.length = Length::other64;
                ++i;
                break;
            default:
                break;
        }
    }
    if (i >= format.size()) return std::nullopt;
    placeholder.conversion = format[i];
    return i + 1;
}

}  // namespace

std::string localizedStringWithFormat(const Locale& locale, std::string_view format,
                                      std::span<const FormatArgument> arguments) {
    std::string out;
    out.reserve(format.size() + 16);
    std::size_t nextArgument = 0;
    std::size_t i = 0;
    while (i < format.size()) {
        const auto percent = format.find('%', i);
        if (percent == std::string_view::npos) {
            out.append(format.substr(i));
            break;
        }
        out.append(format.substr(i, percent - i));
        if (percent + 1 < format.size() && format[percent + 1] == '%') {
            out += '%';
            i = percent + 2;
            continue;
        }
        Placeholder placeholder;
        const auto end = parsePlaceholder(format, percent + 1, placeholder);
        if (!end) {
            out.append(format.substr(percent));
            break;
        }
        const std::string_view literal = format.substr(percent, *end - percent);
        i = *end;

        if (placeholder.widthFromArgument) {
            const auto width =
                nextArgument < arguments.size() ? asInteger(arguments[nextArgument]) : std::nullopt;
            ++nextArgument;
            if (!width) {
                out.append(literal);
                continue;
            }
            if (*width < 0) placeholder.flags += '-';
            placeholder.width = static_cast<int>(*width < 0 ? -*width : *width);
        }
        const std::size_t index = placeholder.position > 0 ? placeholder.position - 1 : nextArgument++;
        if (index >= arguments.size()) {
            out.append(literal);
            continue;
        }
        const FormatArgument& argument = arguments[index];

        switch (placeholder.conversion) {
            case 'd':
            case 'i':
            case 'D': {
                const auto value = asInteger(argument);
                if (!value) {
                    out.append(literal);
                    break;
                }
                const auto length = placeholder.conversion == 'D' ? Length::l : placeholder.length;
                const std::int64_t narrowed = narrowSigned(*value, length);
                std::string text = formatInteger(narrowed, locale);
                if (narrowed >= 0 && hasFlag(placeholder, '+'))
                    text.insert(0, "+");
                else if (narrowed >= 0 && hasFlag(placeholder, ' '))
                    text.insert(0, " ");
                out += pad(std::move(text), placeholder);
                break;
            }
            case 'u':
            case 'U': {
                const auto value = asInteger(argument);
                if (!value) {
                    out.append(literal);
                    break;
                }
                const auto length = placeholder.conversion == 'U' ? Length::l : placeholder.length;
                out += pad(formatUnsignedInteger(narrowUnsigned(*value, length), locale), placeholder);
                break;
            }
            case 'x':
            case 'X':
            case 'o': {
                const auto value = asInteger(argument);
                if (!value) {
                    out.append(literal);
                    break;
                }
                const auto bits = narrowUnsigned(*value, placeholder.length);
                out += printfConversion(placeholder, "ll", static_cast<unsigned long long>(bits));
                break;
            }
            case 'f':
            case 'F':
            case 'e':
            case 'E':
            case 'g':
            case 'G': {
                const auto value = asDouble(argument);
                if (!value) {
                    out.append(literal);
                    break;
                }
                placeholder.length = Length::none;
                std::string text = printfConversion(placeholder, "", *value);
                if (const auto dot = text.find('.'); dot != std::string::npos) {
                    text.replace(dot, 1, decimalSeparator(locale));
                }
                out += text;
                break;
            }
            case '@':
            case 's':
            case 'S': {
                std::string text = asText(argument);
                out += pad(std::move(text), placeholder);
                break;
            }
            default:
                out.append(literal);
                break;
        }
    }
    return out;
}

}  // namespace qrv::platform
