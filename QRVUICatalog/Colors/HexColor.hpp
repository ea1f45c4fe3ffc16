#pragma once
// Colours from hex strings such as "#FA9B31".
//
// Non-alphanumeric characters are trimmed from both ends, the rest is scanned
// as a hexadecimal number, and the length of the trimmed text picks the layout:
//   8 characters  RRGGBBAA (alpha last)
//   6 characters  RRGGBB, opaque
//   3 characters  RGB, each digit doubled (F -> FF), opaque
//   otherwise     opaque black, whatever was scanned.
// Never fails: text the scanner cannot read counts as 0, and junk inside the
// digits keeps whatever prefix was read.
#include <string_view>

#include "Platform/drawing/Color.hpp"

namespace qrv::catalog {

platform::Rgba rgbaWithHexString(std::string_view hexString);

// The same colour in both schemes.
platform::Color colorWithHexString(std::string_view hexString);
inline platform::Color colorFromHexString(std::string_view hexString) {
    return colorWithHexString(hexString);
}

}  // namespace qrv::catalog
