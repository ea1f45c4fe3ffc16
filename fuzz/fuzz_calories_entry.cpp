// The calories record as the main app stores it. Whatever the bytes, decoding
// answers (a record or a reason) without crashing, and a record that decodes
// survives being written back and read again unchanged.
#include <cstddef>
#include <cstdint>

#include "Platform/coding/JSONWriter.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "fuzz/FuzzSupport.hpp"

using qrv::widget::CaloriesConsumedDataEntry;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = qrv::fuzz::bytes(data, size);
    const auto result = CaloriesConsumedDataEntry::decodeResult(input);
    const auto plain = CaloriesConsumedDataEntry::decode(input);
    QRV_FUZZ_CHECK(result.hasValue() == plain.has_value());
    if (!plain) {
        (void)result.error().describe();
        return 0;
    }
    std::string encoded;
    try {
        encoded = plain->encode();
    } catch (const qrv::platform::EncodingError&) {
        return 0;  // only a fraction that is not finite, which JSON cannot carry
    }
    const auto again = CaloriesConsumedDataEntry::decode(encoded);
    QRV_FUZZ_CHECK(again.has_value());
    QRV_FUZZ_CHECK(*again == *plain);
    QRV_FUZZ_CHECK(again->encode() == encoded);
    return 0;
}
