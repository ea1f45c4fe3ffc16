#include "Widget/Water/FloatParsing.hpp"

#include <locale.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace qrv::widget {
namespace {

locale_t cLocale() {
    // Made once and kept: the process's locale must never change how a number reads.
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }

}  // namespace

std::optional<float> parseFloat(std::string_view text) {
    if (text.empty() || isSpace(text.front())) return std::nullopt;
    const std::string terminated(text);  // strtof needs a NUL; an embedded NUL stops it short and fails below
    char* end = nullptr;
    const float value = strtof_l(terminated.c_str(), &end, cLocale());
    if (end != terminated.c_str() + terminated.size()) return std::nullopt;
    return value;
}

}  // namespace qrv::widget
