// Hex colour texts from the palette file. Never fails, and whatever the text,
// every component is a number between 0 and 1.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "QRVUICatalog/Colors/HexColor.hpp"
#include "fuzz/FuzzSupport.hpp"

namespace {

bool isUnit(double component) { return std::isfinite(component) && component >= 0 && component <= 1; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = qrv::fuzz::text(data, size);
    const auto rgba = qrv::catalog::rgbaWithHexString(text);
    QRV_FUZZ_CHECK(isUnit(rgba.red) && isUnit(rgba.green) && isUnit(rgba.blue) && isUnit(rgba.alpha));
    const auto color = qrv::catalog::colorWithHexString(text);
    QRV_FUZZ_CHECK(color.light == rgba && color.dark == rgba);
    return 0;
}
