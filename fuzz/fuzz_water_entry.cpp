// The water record: its amount is read at single precision, so a written and
// re-read record must give back the very same float, and the unit must be one
// of the three the widget knows.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "Platform/coding/JSONWriter.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "fuzz/FuzzSupport.hpp"

using qrv::widget::WaterDataEntry;
using qrv::widget::WaterWidgetUnit;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = qrv::fuzz::bytes(data, size);
    const auto result = WaterDataEntry::decodeResult(input);
    const auto plain = WaterDataEntry::decode(input);
    QRV_FUZZ_CHECK(result.hasValue() == plain.has_value());
    if (!plain) {
        (void)result.error().describe();
        return 0;
    }
    QRV_FUZZ_CHECK(std::isfinite(plain->waterValue));
    QRV_FUZZ_CHECK(plain->waterUnit == WaterWidgetUnit::oz || plain->waterUnit == WaterWidgetUnit::ml ||
                   plain->waterUnit == WaterWidgetUnit::cups);
    std::string encoded;
    try {
        encoded = plain->encode();
    } catch (const qrv::platform::EncodingError&) {
        return 0;
    }
    const auto again = WaterDataEntry::decode(encoded);
    QRV_FUZZ_CHECK(again.has_value());
    QRV_FUZZ_CHECK(*again == *plain);
    QRV_FUZZ_CHECK(again->encode() == encoded);
    return 0;
}
