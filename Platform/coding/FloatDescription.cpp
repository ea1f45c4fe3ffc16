#include "Platform/coding/FloatDescription.hpp"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace qrv::platform {

namespace {

// Lays out shortest digits. `forceExponential` is decided by the caller from
// the binary magnitude (above 2^24 for Float, 2^53 for Double).
template <class T>
std::string describe(T value, bool forceExponential) {
    if (std::isnan(value)) return std::signbit(value) ? "-nan" : "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    if (value == 0) return std::signbit(value) ? "-0.0" : "0.0";

    // Shortest round-trip digits, as d.ddde±x.
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
    bool negative = text.front() == '-';
    if (negative) text.remove_prefix(1);
    auto e = text.find('e');
    std::string digits;
    for (char c : text.substr(0, e))
        if (c != '.') digits += c;
    int exponent = std::atoi(std::string(text.substr(e + 1)).c_str());

    std::string out = negative ? "-" : "";
    if (exponent < -4 || forceExponential) {
        out += digits.front();
        if (digits.size() > 1) {
            out += '.';
            out.append(digits, 1);
        }
        out += exponent < 0 ? "e-" : "e+";
        int magnitude = std::abs(exponent);
        if (magnitude < 10) out += '0';
        out += std::to_string(magnitude);
        return out;
    }
    if (exponent < 0) {
        out += "0.";
        out.append(static_cast<std::size_t>(-exponent - 1), '0');
        out += digits;
        return out;
    }
    auto integerDigits = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= integerDigits) {
        out += digits;
        out.append(integerDigits - digits.size(), '0');
        out += ".0";
    } else {
        out.append(digits, 0, integerDigits);
        out += '.';
        out.append(digits, integerDigits);
    }
    return out;
}

std::string stripPointZero(std::string text) {
    if (text.size() >= 2 && text.compare(text.size() - 2, 2, ".0") == 0) text.resize(text.size() - 2);
    return text;
}

}  // namespace

std::string floatDescription(float value) {
    return describe(value, std::isfinite(value) && std::fabs(value) > 16777216.0f);
}

std::string doubleDescription(double value) {
    return describe(value, std::isfinite(value) && std::fabs(value) > 9007199254740992.0);
}

std::string jsonNumberText(float value) { return stripPointZero(floatDescription(value)); }
std::string jsonNumberText(double value) { return stripPointZero(doubleDescription(value)); }

}  // namespace qrv::platform
