#include "QRVUICatalog/Colors/HexColor.hpp"

#include <cstdint>
#include <string>

#include "Platform/locale/TextScanning.hpp"

namespace qrv::catalog {
namespace {

double channel(std::uint64_t byte) { return static_cast<double>(byte & 0xFF) / 255.0; }

}  // namespace

platform::Rgba rgbaWithHexString(std::string_view hexString) {
    const std::string trimmed = platform::trimmingNonAlphanumerics(hexString);
    const std::uint64_t value = platform::scanHexInt64(trimmed).value_or(platform::HexScan{}).value;
    switch (platform::characterCount(trimmed)) {
        case 8:
            return {channel(value >> 24), channel(value >> 16), channel(value >> 8), channel(value)};
        case 6:
            return {channel(value >> 16), channel(value >> 8), channel(value), 1.0};
        case 3:
            return {channel(((value >> 8) & 0xF) * 17), channel(((value >> 4) & 0xF) * 17),
                    channel((value & 0xF) * 17), 1.0};
        default:
            return {0, 0, 0, 1.0};
    }
}

platform::Color colorWithHexString(std::string_view hexString) {
    return platform::Color::fixed(rgbaWithHexString(hexString));
}

}  // namespace qrv::catalog
