#include "Platform/locale/TextScanning.hpp"

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <memory>

namespace qrv::platform {
namespace {

constexpr char32_t kMalformed = 0xFFFFFFFF;

// Decodes the scalar at offset; malformed bytes give kMalformed and advance by one.
char32_t decodeAt(std::string_view text, std::size_t& offset) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    const auto length = static_cast<int32_t>(text.size());
    auto i = static_cast<int32_t>(offset);
    UChar32 c = 0;
    U8_NEXT(bytes, i, length, c);
    offset = static_cast<std::size_t>(i);
    return c < 0 ? kMalformed : static_cast<char32_t>(c);
}

// The start of the scalar that ends at offset (offset > 0): back over at most
// three continuation bytes, accepted only when decoding from there lands
// exactly on offset; otherwise the last byte stands alone (malformed).
std::size_t previousStart(std::string_view text, std::size_t offset) {
    std::size_t start = offset - 1;
    for (int steps = 0; steps < 3 && start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80;
         ++steps) {
        --start;
    }
    std::size_t probe = start;
    decodeAt(text, probe);
    return probe == offset ? start : offset - 1;
}

bool isWhitespaceOrNewline(char32_t c) {
    return c != kMalformed && (u_isUWhiteSpace(static_cast<UChar32>(c)) != 0);
}

int hexDigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

struct BreakCloser {
    void operator()(UBreakIterator* it) const { ubrk_close(it); }
};

}  // namespace

bool isAlphanumeric(char32_t scalar) {
    if (scalar > 0x10FFFF) return false;
    const auto mask = U_GET_GC_MASK(static_cast<UChar32>(scalar));
    return (mask & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

std::string trimmingNonAlphanumerics(std::string_view utf8) {
    std::size_t begin = 0;
    while (begin < utf8.size()) {
        std::size_t next = begin;
        if (isAlphanumeric(decodeAt(utf8, next))) break;
        begin = next;
    }
    std::size_t end = utf8.size();
    while (end > begin) {
        const std::size_t start = previousStart(utf8, end);
        std::size_t probe = start;
        if (isAlphanumeric(decodeAt(utf8, probe))) break;
        end = start;
    }
    return std::string(utf8.substr(begin, end - begin));
}

std::size_t characterCount(std::string_view utf8) {
    bool simple = true;  // ASCII without CR: one byte is one character
    for (char c : utf8) {
        if (static_cast<unsigned char>(c) >= 0x80 || c == '\r') {
            simple = false;
            break;
        }
    }
    if (simple) return utf8.size();

    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    u_strFromUTF8WithSub(nullptr, 0, &units, utf8.data(), static_cast<int32_t>(utf8.size()), 0xFFFD, nullptr,
                         &status);
    std::u16string text(static_cast<std::size_t>(units), u'\0');
    status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(text.data()), units, nullptr, utf8.data(),
                         static_cast<int32_t>(utf8.size()), 0xFFFD, nullptr, &status);
    if (U_FAILURE(status)) return utf8.size();

    std::unique_ptr<UBreakIterator, BreakCloser> it(
        ubrk_open(UBRK_CHARACTER, "", reinterpret_cast<const UChar*>(text.data()), units, &status));
    if (U_FAILURE(status) || !it) return utf8.size();
    std::size_t count = 0;
    ubrk_first(it.get());
    while (ubrk_next(it.get()) != UBRK_DONE) ++count;
    return count;
}

std::optional<HexScan> scanHexInt64(std::string_view utf8) {
    std::size_t offset = 0;
    while (offset < utf8.size()) {
        std::size_t next = offset;
        if (!isWhitespaceOrNewline(decodeAt(utf8, next))) break;
        offset = next;
    }
    if (offset + 2 < utf8.size() && utf8[offset] == '0' &&
        (utf8[offset + 1] == 'x' || utf8[offset + 1] == 'X') && hexDigitValue(utf8[offset + 2]) >= 0) {
        offset += 2;
    }
    constexpr std::uint64_t kLimit = UINT64_MAX >> 4;
    std::uint64_t value = 0;
    bool any = false;
    while (offset < utf8.size()) {
        const int digit = hexDigitValue(utf8[offset]);
        if (digit < 0) break;
        any = true;
        if (value > kLimit) {
            value = UINT64_MAX;  // clamped; the remaining digits are consumed
        } else {
            value = (value << 4) | static_cast<std::uint64_t>(digit);
        }
        ++offset;
    }
    if (!any) return std::nullopt;
    return HexScan{value, offset};
}

}  // namespace qrv::platform
