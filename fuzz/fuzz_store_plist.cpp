// The shared store's file, parsed from bytes as the store reads it (binary or
// XML property list). Whatever the bytes, parsing ends in a value or a
// PropertyListError; a value that parses is written out again in both forms,
// and what is written reads back to the same bytes (values compared through
// their encoding, so that a NaN real still counts as itself).
#include <cstddef>
#include <cstdint>

#include "Platform/store/PropertyList.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace qrv::platform;

namespace {

void checkRoundTrip(const PropertyListValue& value, PropertyList::Format format) {
    std::vector<std::uint8_t> first;
    try {
        first = PropertyList::encode(value, format);
    } catch (const PropertyListError&) {
        return;  // a value no property list can hold, refused with a reason
    }
    const PropertyListValue reread = PropertyList::decode(first);
    QRV_FUZZ_CHECK(PropertyList::encode(reread, format) == first);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PropertyListValue value{false};
    try {
        value = PropertyList::decode(qrv::fuzz::bytes(data, size));
    } catch (const PropertyListError&) {
        return 0;
    }
    checkRoundTrip(value, PropertyList::Format::binary);
    checkRoundTrip(value, PropertyList::Format::xml);
    return 0;
}
