// The shared store's file, parsed from bytes as the store reads it (binary or
// XML property list). Whatever the bytes, parsing ends in a value or a
// PropertyListError. A value that parses can always be written back in binary
// (the store rewrites everything it read whenever it writes one key) and reads
// back to the same bytes; XML may refuse it (a date it cannot spell) or
// normalise it once (dates to the whole second), and is stable after that.
// Values are compared through their encoding, so a NaN real counts as itself.
#include <cstddef>
#include <cstdint>

#include "Platform/store/PropertyList.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace qrv::platform;

namespace {

void checkBinary(const PropertyListValue& value) {
    const auto first = PropertyList::encode(value, PropertyList::Format::binary);
    QRV_FUZZ_CHECK(PropertyList::encode(PropertyList::decode(first)) == first);
}

void checkXML(const PropertyListValue& value) {
    std::vector<std::uint8_t> first;
    try {
        first = PropertyList::encode(value, PropertyList::Format::xml);
    } catch (const PropertyListError&) {
        return;  // a value XML cannot spell, refused with a reason
    }
    const auto second = PropertyList::encode(PropertyList::decode(first), PropertyList::Format::xml);
    const auto third = PropertyList::encode(PropertyList::decode(second), PropertyList::Format::xml);
    QRV_FUZZ_CHECK(second == third);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PropertyListValue value{false};
    try {
        value = PropertyList::decode(qrv::fuzz::bytes(data, size));
    } catch (const PropertyListError&) {
        return 0;
    }
    checkBinary(value);
    checkXML(value);
    return 0;
}
