#pragma once
// Reading a 32-bit float from text as the platform's standard library does,
// for the amounts the water widget's intent carries as text.
#include <optional>
#include <string>
#include <string_view>

namespace qrv::widget {

// The platform's standard decimal parser (C locale, never the user's): the
// whole text must be the number, with no white space before or after. Accepts
// a sign, decimals with or without digits on one side of the point ("5.",
// ".5"), exponents, hexadecimal floats ("0x1p3"), "inf"/"infinity" and "nan".
// Too large a number reads as infinity, too small a one as zero. Nothing for
// the empty text, "1,5", "." and the like.
std::optional<float> parseFloat(std::string_view text);

}  // namespace qrv::widget
