#include "Platform/locale/NumberFormatter.hpp"

#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <array>
#include <cmath>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace qrv::platform {
namespace {

struct FormatCloser {
    void operator()(UNumberFormat* format) const { unum_close(format); }
};
using FormatHandle = std::unique_ptr<UNumberFormat, FormatCloser>;

enum class Style { grouped, plain };

// Opening an ICU formatter costs far more than formatting with it, so each
// thread keeps one per locale and style. A formatter is only ever used by the
// thread that opened it.
UNumberFormat* formatterFor(const Locale& locale, Style style) {
    thread_local std::unordered_map<std::string, FormatHandle> cache;
    std::string key = locale.identifier();
    key += style == Style::grouped ? "|g" : "|p";
    if (auto it = cache.find(key); it != cache.end()) return it->second.get();

    UErrorCode status = U_ZERO_ERROR;
    FormatHandle format(unum_open(UNUM_DECIMAL, nullptr, 0, locale.identifier().c_str(), nullptr, &status));
    if (U_FAILURE(status) || !format) return nullptr;
    if (style == Style::plain) {
        unum_setAttribute(format.get(), UNUM_GROUPING_USED, 0);
        unum_setAttribute(format.get(), UNUM_MIN_FRACTION_DIGITS, 0);
        unum_setAttribute(format.get(), UNUM_MAX_FRACTION_DIGITS, 0);
        unum_setAttribute(format.get(), UNUM_MIN_INTEGER_DIGITS, 1);
        unum_setAttribute(format.get(), UNUM_MAX_INTEGER_DIGITS, 42);
        unum_setAttribute(format.get(), UNUM_ROUNDING_MODE, UNUM_ROUND_HALFEVEN);
    }
    return cache.emplace(std::move(key), std::move(format)).first->second.get();
}

std::optional<std::string> toUtf8(const UChar* text, int32_t length) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t needed = 0;
    u_strToUTF8(nullptr, 0, &needed, text, length, &status);
    if (status != U_BUFFER_OVERFLOW_ERROR && U_FAILURE(status)) return std::nullopt;
    std::string out(static_cast<std::size_t>(needed), '\0');
    status = U_ZERO_ERROR;
    u_strToUTF8(out.data(), needed, nullptr, text, length, &status);
    if (U_FAILURE(status)) return std::nullopt;
    return out;
}

// Runs one ICU formatting call with a stack buffer and a heap retry.
template <class Call>
std::optional<std::string> runFormat(Call&& call) {
    std::array<UChar, 128> buffer{};
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = call(buffer.data(), static_cast<int32_t>(buffer.size()), &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        std::u16string heap(static_cast<std::size_t>(length), u'\0');
        status = U_ZERO_ERROR;
        length = call(reinterpret_cast<UChar*>(heap.data()), length, &status);
        if (U_FAILURE(status)) return std::nullopt;
        return toUtf8(reinterpret_cast<const UChar*>(heap.data()), length);
    }
    if (U_FAILURE(status)) return std::nullopt;
    return toUtf8(buffer.data(), length);
}

std::optional<std::string> formatDecimalText(std::string_view digits, const Locale& locale) {
    UNumberFormat* format = formatterFor(locale, Style::grouped);
    if (format == nullptr) return std::nullopt;
    return runFormat([&](UChar* out, int32_t capacity, UErrorCode* status) {
        return unum_formatDecimal(format, digits.data(), static_cast<int32_t>(digits.size()), out, capacity,
                                  nullptr, status);
    });
}

}  // namespace

std::string formatInteger(std::int64_t value, const Locale& locale) {
    if (UNumberFormat* format = formatterFor(locale, Style::grouped)) {
        auto text = runFormat([&](UChar* out, int32_t capacity, UErrorCode* status) {
            return unum_formatInt64(format, value, out, capacity, nullptr, status);
        });
        if (text) return *text;
    }
    return std::to_string(value);
}

std::string formatUnsignedInteger(std::uint64_t value, const Locale& locale) {
    if (value <= static_cast<std::uint64_t>(INT64_MAX))
        return formatInteger(static_cast<std::int64_t>(value), locale);
    const std::string digits = std::to_string(value);
    return formatDecimalText(digits, locale).value_or(digits);
}

std::string decimalSeparator(const Locale& locale) {
    if (UNumberFormat* format = formatterFor(locale, Style::grouped)) {
        auto text = runFormat([&](UChar* out, int32_t capacity, UErrorCode* status) {
            return unum_getSymbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL, out, capacity, status);
        });
        if (text && !text->empty()) return *text;
    }
    return ".";
}

std::string localizedDigits(std::string_view text, const Locale& locale) {
    UNumberFormat* format = formatterFor(locale, Style::grouped);
    if (format == nullptr) return std::string(text);
    auto symbol = [&](UNumberFormatSymbol which) {
        return runFormat([&](UChar* out, int32_t capacity, UErrorCode* status) {
            return unum_getSymbol(format, which, out, capacity, status);
        });
    };
    const auto zero = symbol(UNUM_ZERO_DIGIT_SYMBOL);
    if (!zero || zero->empty() || *zero == "0") return std::string(text);
    std::array<std::string, 10> digits{*zero};
    for (int d = 1; d <= 9; ++d) {
        const auto digit = symbol(static_cast<UNumberFormatSymbol>(UNUM_ONE_DIGIT_SYMBOL + d - 1));
        if (!digit || digit->empty()) return std::string(text);
        digits[static_cast<std::size_t>(d)] = *digit;
    }
    const std::string decimal = symbol(UNUM_DECIMAL_SEPARATOR_SYMBOL).value_or(".");
    const std::string grouping = symbol(UNUM_GROUPING_SEPARATOR_SYMBOL).value_or(",");
    auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (isDigit(i))
            out += digits[static_cast<std::size_t>(c - '0')];
        else if ((c == '.' || c == ',') && i > 0 && isDigit(i - 1) && isDigit(i + 1))
            out += c == '.' ? decimal : grouping;
        else
            out += c;
    }
    return out;
}

std::optional<std::string> NumberFormatter::string(double value) const {
    // The platform's default symbols, whatever the locale's own are.
    if (std::isnan(value)) return std::string("NaN");
    if (std::isinf(value)) return std::string(value > 0 ? "+∞" : "-∞");
    UNumberFormat* format = formatterFor(locale_, Style::plain);
    if (format == nullptr) return std::nullopt;
    return runFormat([&](UChar* out, int32_t capacity, UErrorCode* status) {
        return unum_formatDouble(format, value, out, capacity, nullptr, status);
    });
}

}  // namespace qrv::platform
