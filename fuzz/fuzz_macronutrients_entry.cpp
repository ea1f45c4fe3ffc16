// The macronutrients record, with its values as an array alternating raw key
// and value. Decoding never crashes; a record that decodes comes back equal
// after writing and reading, with at most the three known nutrients.
#include <cstddef>
#include <cstdint>

#include "Platform/coding/JSONWriter.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "fuzz/FuzzSupport.hpp"

using qrv::widget::MacronutrientsDataEntry;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = qrv::fuzz::bytes(data, size);
    const auto result = MacronutrientsDataEntry::decodeResult(input);
    const auto plain = MacronutrientsDataEntry::decode(input);
    QRV_FUZZ_CHECK(result.hasValue() == plain.has_value());
    if (!plain) {
        (void)result.error().describe();
        return 0;
    }
    QRV_FUZZ_CHECK(plain->values.size() <= 3);
    std::string encoded;
    try {
        encoded = plain->encode();
    } catch (const qrv::platform::EncodingError&) {
        return 0;
    }
    const auto again = MacronutrientsDataEntry::decode(encoded);
    QRV_FUZZ_CHECK(again.has_value());
    QRV_FUZZ_CHECK(*again == *plain);
    QRV_FUZZ_CHECK(again->encode() == encoded);
    return 0;
}
