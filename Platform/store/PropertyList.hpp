#pragma once
// Property-list files: binary (what the phone writes for user defaults) and XML.
// Reading accepts either form; writing produces either.
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "Platform/store/PropertyListValue.hpp"

namespace qrv::platform {

// The bytes are not a property list this program can read, or a value cannot be
// represented in one (text holding a NUL character or bytes that are not UTF-8,
// a date the XML form cannot spell).
class PropertyListError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

namespace PropertyList {

enum class Format { binary, xml };

// Throws PropertyListError when the value cannot be written. Binary keeps every
// date exactly; XML keeps dates of the years 1 to 9999, to the whole second.
std::vector<std::uint8_t> encode(const PropertyListValue& value, Format format = Format::binary);

// Reads a binary or XML property list. Text that is not UTF-8 has each bad
// sequence replaced by U+FFFD. Throws PropertyListError when the bytes do not
// parse or nest deeper than any real store would.
PropertyListValue decode(std::span<const std::uint8_t> bytes);

}  // namespace PropertyList

}  // namespace qrv::platform
