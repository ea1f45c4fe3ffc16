#pragma once
// Numbers as text the way the platform prints them (string interpolation,
// description): the shortest digits that read back to the same value of that
// type, plain decimal for moderate magnitudes ("250.0", "0.0001"), exponent form
// below 1e-4 and above 2^24 for Float / 2^53 for Double ("9e-05", "1e+10").
// A Float is printed as a Float: 0.1f is "0.1", never "0.10000000149011612".
#include <string>

namespace qrv::platform {

std::string floatDescription(float value);
std::string doubleDescription(double value);

// The JSON encoder's number text: the description without a trailing ".0"
// ("24", "-0", "1e+10"). Only for finite values.
std::string jsonNumberText(float value);
std::string jsonNumberText(double value);

}  // namespace qrv::platform
