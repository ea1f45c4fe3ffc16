// The shared store's file, parsed from bytes as the store reads it (binary or
// XML property list). Whatever the bytes, parsing ends in a value or a
// PropertyListError. A value that parses can always be written back in binary
// (the store rewrites everything it read whenever it writes one key) and reads
// back as the same value; XML may refuse it (a date it cannot spell) or
// normalise it once (dates to the whole second), and is stable after that.
#include <cstddef>
#include <cstdint>

#include "Platform/store/PropertyList.hpp"
#include "fuzz/FuzzSupport.hpp"
#include "fuzz/SameValue.hpp"

using namespace qrv::platform;

namespace {

void checkBinary(const PropertyListValue& value) {
    QRV_FUZZ_CHECK(qrv::fuzz::sameValue(PropertyList::decode(PropertyList::encode(value)), value));
}

void checkXML(const PropertyListValue& value) {
    PropertyListValue once{false};
    try {
        once = PropertyList::decode(PropertyList::encode(value, PropertyList::Format::xml));
    } catch (const PropertyListError&) {
        return;  // a value XML cannot spell, refused with a reason
    }
    QRV_FUZZ_CHECK(
        qrv::fuzz::sameValue(PropertyList::decode(PropertyList::encode(once, PropertyList::Format::xml)), once));
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
