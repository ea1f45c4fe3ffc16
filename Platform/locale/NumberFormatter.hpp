#pragma once
// Locale-aware number texts, produced by ICU as the platform's own number
// formatters produce them.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/locale/Locale.hpp"

namespace qrv::platform {

// An integer as a decimal-style formatter for the locale writes it: with the
// locale's grouping ("1,234" in English, "1.234" in German). This is how
// locale-aware string formatting renders %d and its relatives.
std::string formatInteger(std::int64_t value, const Locale& locale = Locale::current());
// The same for an unsigned value (the %u conversions).
std::string formatUnsignedInteger(std::uint64_t value, const Locale& locale = Locale::current());

// The locale's decimal separator ("." in English, "," in German).
std::string decimalSeparator(const Locale& locale = Locale::current());

// A text whose figures were written with ASCII digits ("/250", "1250 ml",
// "2.5 cups") in the digits of a locale that writes others: Arabic-Indic for
// "ar" ("/٢٥٠", "٢٫٥"), with the locale's separators between digits. For a
// locale that writes ASCII digits the text comes back unchanged, so figures
// from code that knows no locale read like the locale's own.
std::string localizedDigits(std::string_view text, const Locale& locale = Locale::current());

// A number formatter in its default configuration: no fraction digits, ties
// rounded to even (95.5 -> "96", 96.5 -> "96"), no grouping, a minus sign for
// negatives (also for a negative value that rounds to zero: -0.4 -> "-0"),
// "NaN" and "+∞" / "-∞" for the non-finite values.
class NumberFormatter {
  public:
    explicit NumberFormatter(Locale locale = Locale::current()) : locale_(std::move(locale)) {}

    // Nothing when the formatting library cannot produce a text.
    std::optional<std::string> string(double value) const;

    const Locale& locale() const { return locale_; }

  private:
    Locale locale_;
};

}  // namespace qrv::platform
