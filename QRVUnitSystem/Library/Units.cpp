#include "QRVUnitSystem/Library/Units.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <numeric>
#include <system_error>

namespace qrv::units::library {
namespace {

// US customary volumes are defined exactly from the cubic inch:
// 1 US fl oz = 29.5735295625 ml, 1 US cup = 8 US fl oz = 236.5882365 ml.
constexpr std::int64_t kStepsPerMillilitre = 10'000'000'000;
constexpr std::int64_t kStepsPerFluidOunce = 295'735'295'625;
constexpr std::int64_t kStepsPerCup = 8 * kStepsPerFluidOunce;

// Decimal places: what a food diary shows. Millilitres and grams are counted
// whole (nobody logs 250.4 ml). Ounces and cups keep one decimal because half
// servings (1.5 cups, 0.5 fl oz) are common on nutrition labels and one decimal
// of a cup (24 ml) or an ounce (3 ml) is as fine as anyone measures water.
constexpr std::array<UnitInfo, 4> kUnits{{
    {14, Dimension::volume, kStepsPerCup, 1, "cup", "cups", "cup", "cups"},
    {15, Dimension::volume, kStepsPerMillilitre, 0, "ml", "ml", "milliliter", "milliliters"},
    // "fl oz", not "oz": the library also knows masses, and a bare "oz" on a
    // nutrition label is the weight ounce.
    {16, Dimension::volume, kStepsPerFluidOunce, 1, "fl oz", "fl oz", "fluid ounce", "fluid ounces"},
    {17, Dimension::mass, 1, 0, "g", "g", "gram", "grams"},
}};

}  // namespace

const UnitInfo* findUnit(int code) {
    for (const auto& unit : kUnits)
        if (unit.code == code) return &unit;
    return nullptr;
}

std::optional<double> convert(const UnitInfo& from, double value, const UnitInfo& to) {
    if (from.dimension != to.dimension || !std::isfinite(value)) return std::nullopt;
    if (from.code == to.code) return value;
    // Reduce the ratio first so that exact multiples stay exact (cups to ounces is 8/1).
    const std::int64_t divisor = std::gcd(from.baseSteps, to.baseSteps);
    const auto numerator = static_cast<double>(from.baseSteps / divisor);
    const auto denominator = static_cast<double>(to.baseSteps / divisor);
    const double result = value * numerator / denominator;
    if (!std::isfinite(result)) return std::nullopt;
    return result;
}

std::optional<std::string> roundedDecimalText(double value, int decimalPlaces) {
    if (!std::isfinite(value) || decimalPlaces < 0) return std::nullopt;
    // Shortest digits that read back as the same double, e.g. "8.45e+00".
    char shortest[64];
    const auto [end, ec] =
        std::to_chars(shortest, shortest + sizeof shortest, std::fabs(value), std::chars_format::scientific);
    if (ec != std::errc{}) return std::nullopt;
    const std::string_view text(shortest, static_cast<std::size_t>(end - shortest));
    const std::size_t e = text.find('e');
    std::string significand;
    for (char c : text.substr(0, e))
        if (c != '.') significand += c;
    int exponent = 0;
    std::from_chars(text.data() + e + 1 + (text[e + 1] == '+' ? 1 : 0), text.data() + text.size(), exponent);

    // Lay the digits out as integer part and fraction.
    std::string integerPart;
    std::string fraction;
    const int integerDigits = exponent + 1;
    if (integerDigits <= 0) {
        integerPart = "0";
        fraction = std::string(static_cast<std::size_t>(-integerDigits), '0') + significand;
    } else if (static_cast<std::size_t>(integerDigits) >= significand.size()) {
        integerPart =
            significand + std::string(static_cast<std::size_t>(integerDigits) - significand.size(), '0');
    } else {
        integerPart = significand.substr(0, static_cast<std::size_t>(integerDigits));
        fraction = significand.substr(static_cast<std::size_t>(integerDigits));
    }
    const auto places = static_cast<std::size_t>(decimalPlaces);
    if (fraction.size() <= places) fraction.resize(places + 1, '0');

    std::string digits = integerPart + fraction.substr(0, places);
    // Half away from zero on the magnitude: a following digit of 5 or more rounds up.
    if (fraction[places] >= '5') {
        std::size_t i = digits.size();
        while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
        if (i == 0)
            digits.insert(digits.begin(), '1');
        else
            ++digits[i - 1];
    }
    const std::size_t integerLength = digits.size() - places;
    const bool isZero = digits.find_first_not_of('0') == std::string::npos;
    std::string result = (value < 0 && !isZero) ? "-" : "";
    result += digits.substr(0, integerLength);
    if (places > 0) result += "." + digits.substr(integerLength);
    return result;
}

std::optional<std::string> formatValue(const UnitInfo& unit, double value, int decimalPlaces,
                                       bool abbreviated) {
    auto number = roundedDecimalText(value, decimalPlaces);
    if (!number) return std::nullopt;
    const bool singular = *number == "1" || *number == "-1";
    const std::string_view name = abbreviated
                                      ? (singular ? unit.abbreviationSingular : unit.abbreviationPlural)
                                      : (singular ? unit.nameSingular : unit.namePlural);
    return *number + " " + std::string(name);
}

}  // namespace qrv::units::library
