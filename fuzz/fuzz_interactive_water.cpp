// The list of water taps the extension keeps for itself. The strict decoder and
// the salvaging one must agree: a list that decodes as a whole salvages to the
// same records with nothing unreadable, and salvaging never finds more records
// than the array has elements. A decoded list written back reads back equal.
#include <cstddef>
#include <cstdint>

#include "Widget/Cache/InteractiveWaterData.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace qrv::widget;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = qrv::fuzz::bytes(data, size);
    const auto strict = decodeInteractiveWaterDataList(input);
    const auto salvaged = salvageInteractiveWaterDataList(input);
    if (!salvaged.isArray) {
        QRV_FUZZ_CHECK(!strict.has_value());
        QRV_FUZZ_CHECK(salvaged.records.empty());
    }
    if (!strict) {
        return 0;
    }
    QRV_FUZZ_CHECK(salvaged.isArray);
    QRV_FUZZ_CHECK(salvaged.unreadableElements == 0);
    QRV_FUZZ_CHECK(salvaged.records == *strict);
    std::vector<std::uint8_t> encoded;
    try {
        encoded = encodeInteractiveWaterDataList(*strict);
    } catch (const InteractiveDataEncodingError&) {
        return 0;
    }
    const auto again = decodeInteractiveWaterDataList(encoded);
    QRV_FUZZ_CHECK(again.has_value());
    QRV_FUZZ_CHECK(*again == *strict);
    QRV_FUZZ_CHECK(encodeInteractiveWaterDataList(*again) == encoded);
    return 0;
}
