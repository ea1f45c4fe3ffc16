#pragma once
// Small text utilities with the platform's string semantics: trimming by
// Unicode character class, counting user-perceived characters, and the hex
// scanner of the platform's string scanner.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qrv::platform {

// Letters, marks and numbers (Unicode general categories L*, M*, N*): '_', '#',
// blanks and emoji are not; 'é', a combining accent, '²' and '½' are.
bool isAlphanumeric(char32_t scalar);

// Removes, from both ends of UTF-8 text, every scalar that is not alphanumeric;
// characters in between stay ("x#y" stays "x#y"). Malformed bytes count as not
// alphanumeric.
std::string trimmingNonAlphanumerics(std::string_view utf8);

// The number of grapheme clusters (what the user sees as characters): "e" plus
// a combining accent is one, "\r\n" is one.
std::size_t characterCount(std::string_view utf8);

// The string scanner's hexadecimal scan: skips leading white space, takes an
// optional "0x"/"0X" only when a hex digit follows, then reads hex digits up to
// the first other character. More than 16 significant digits clamp to the
// largest value. No digits gives nothing. No sign is accepted.
struct HexScan {
    std::uint64_t value = 0;
    std::size_t endOffset = 0;  // byte offset just past the last digit read
};
std::optional<HexScan> scanHexInt64(std::string_view utf8);

}  // namespace qrv::platform
