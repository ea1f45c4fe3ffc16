// The PNG writer round-trips through libpng's reader (which checks every
// chunk's CRC) with each deflate and level, on flat art and on noise.
#include "Platform/drawing/CairoPainter.hpp"

#include <gtest/gtest.h>

namespace qrv::platform {
namespace {

// Flat colour on the left, noise on the right: noise does not compress, so
// the stored-block fallback and the output bound are exercised too.
Raster flatAndNoise(int width, int height) {
    Raster r{width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height * 4)};
    std::uint32_t seed = 12345;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 4; ++c) {
                seed = seed * 1664525u + 1013904223u;
                r.rgba[(static_cast<std::size_t>(y) * width + x) * 4 + c] =
                    x < width / 2 ? static_cast<std::uint8_t>(40 * c + 10) : static_cast<std::uint8_t>(seed >> 24);
            }
    return r;
}

TEST(PngCodec, EveryDeflateAndLevelDecodesToTheSamePixels) {
    using D = PngSettings::Deflate;
    const Raster raster = flatAndNoise(301, 203);
    for (const PngSettings settings : {PngSettings{D::isal, 0}, PngSettings{D::isal, 1}, PngSettings{D::isal, 3},
                                       PngSettings{D::zlib, 0}, PngSettings{D::zlib, 9}}) {
        SCOPED_TRACE(std::to_string(static_cast<int>(settings.deflate)) + "-" + std::to_string(settings.level));
        auto png = encodePNG(raster, settings);
        ASSERT_TRUE(png.ok()) << png.error();
        auto decoded = decodePNG(png.value());
        ASSERT_TRUE(decoded.ok()) << decoded.error();
        EXPECT_EQ(decoded.value(), raster);
    }
    const Raster flat{100, 100, std::vector<std::uint8_t>(40'000, 128)};
    EXPECT_LT(encodePNG(flat).value().size(), 1000u);  // flat art compresses by default

    for (const auto& [settings, message] : {std::pair{PngSettings{D::isal, 4}, "ISA-L level must be between 0 and 3, not 4"},
                                            std::pair{PngSettings{D::zlib, -1}, "zlib level must be between 0 and 9, not -1"}})
        EXPECT_EQ(encodePNG(raster, settings).error(), message);
    EXPECT_FALSE(encodePNG(Raster{2, 2, {}}).ok());
}

}  // namespace
}  // namespace qrv::platform
