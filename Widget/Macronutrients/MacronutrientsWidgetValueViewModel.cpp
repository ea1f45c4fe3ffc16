#include "Widget/Macronutrients/MacronutrientsWidgetValueViewModel.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <optional>
#include <string_view>

#include "Platform/locale/NumberFormatter.hpp"
#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUnitSystem/QRVUnit.hpp"

namespace qrv::widget {

namespace {

using catalog::QRVColor;
using catalog::QRVFont;

// Truncation toward zero of a gram amount. The records never carry an amount
// that is not finite or beyond 64 bits; one that does is a defect upstream,
// and the program stops rather than show a made-up number.
std::int64_t truncatedOrDie(double amount) {
    if (!std::isfinite(amount) || !(amount > -9223372036854777856.0) || !(amount < 9223372036854775808.0)) {
        std::fprintf(stderr, "fatal error: %g grams cannot be converted to a whole number\n", amount);
        std::abort();
    }
    return static_cast<std::int64_t>(amount);
}

// A base-10 integer: an optional '+' or '-', then one or more ASCII digits and
// nothing else; nothing on overflow.
std::optional<std::int64_t> parseInteger(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty()) return std::nullopt;
    // Accumulate on the side of the sign so that the most negative value
    // parses too.
    std::int64_t result = 0;
    constexpr auto min = std::numeric_limits<std::int64_t>::min();
    constexpr auto max = std::numeric_limits<std::int64_t>::max();
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        const int digit = c - '0';
        if (negative) {
            if (result < (min + digit) / 10) return std::nullopt;
            result = result * 10 - digit;
        } else {
            if (result > (max - digit) / 10) return std::nullopt;
            result = result * 10 + digit;
        }
    }
    return result;
}

constexpr QRVFont kTitleFont = QRVFont::headline18Semibold;  // raw value 9
constexpr QRVFont kSubtitleFont = QRVFont::label12Regular;   // raw value 2
constexpr QRVFont kOverFont = QRVFont::footnote12Bold;       // raw value 19
constexpr QRVFont kLeftFont = QRVFont::footnote12Regular;    // raw value 18

}  // namespace

std::int64_t MacronutrientsWidgetValueViewModel::wholeGramDifference() const {
    const double amount = std::fabs(data.maxValue - data.value);
    const auto gram = units::QRVUnit::unitWithType(units::kQRVUnitTypeGram);
    const auto grams = gram ? units::QRVUnitValue::initWithUnit(*gram, amount) : std::nullopt;
    if (!grams) return truncatedOrDie(amount);
    const auto rounded = grams->roundedValueAsString();
    if (!rounded) return truncatedOrDie(amount);
    if (const auto parsed = parseInteger(*rounded)) return *parsed;
    return truncatedOrDie(amount);
}

std::string MacronutrientsWidgetValueViewModel::leftOverText() const {
    // Looked up in the extension's own table, as every widget text is.
    const std::string format = isOver() ? localizedString("dashb.macros.gram.over", "%d g over")
                                        : localizedString("dashb.macros.gram.left", "%d g left");
    return localizedStringWithFormat(format, {wholeGramDifference()});
}

std::string MacronutrientsWidgetValueViewModel::valueText() const {
    return platform::NumberFormatter().string(data.value).value_or("--");
}

std::string MacronutrientsWidgetValueViewModel::goalText() const {
    // In the locale's digits, like the value over it (Arabic-Indic in Arabic).
    return "/" + platform::localizedDigits(std::to_string(truncatedOrDie(data.maxValue))) +
           localizedString("unitSystems.gram.abbreviation.plural", "g");
}

AnimatedCircularProgressViewConfig MacronutrientsWidgetValueViewModel::ringConfiguration(
    double trackWidth) const {
    const auto nutrient = colors();
    return AnimatedCircularProgressViewConfig{
        .trackBackgroundColor = QRVColor::neutralsBackground(),
        .trackForegroundColor = nutrient.main,
        .trackOverageForegroundColor = nutrient.text,
        .trackOverageBackgroundColor = nutrient.background,
        .trackWidth = trackWidth,
        .textAccessibilityIdPrefix = kTextAccessibilityIdPrefix,
        .titleFont = catalog::font(kTitleFont, false),
        .titleColor = QRVColor::neutralsPrimary(),
        .subtitleFont = catalog::font(kSubtitleFont, false),
        .subtitleColor = QRVColor::neutralsSecondary(),
    };
}

QRVFont MacronutrientsWidgetValueViewModel::leftOverFontStyle() const {
    return isOver() ? kOverFont : kLeftFont;
}

platform::Font MacronutrientsWidgetValueViewModel::leftOverFont() const {
    return catalog::font(leftOverFontStyle(), false);
}

platform::Color MacronutrientsWidgetValueViewModel::leftOverColor() const {
    return QRVColor::neutralsSecondary();
}

std::size_t MacronutrientsWidgetValueViewModel::hashValue() const {
    std::size_t seed = std::hash<std::string>{}(data.title);
    seed ^= std::hash<std::string>{}(leftOverText()) + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
    return seed;
}

}  // namespace qrv::widget
