// Compare's pixel method: what a person would call a change counts; an edge
// pixel drawn a shade differently does not.
#include "Host/ImageDiff.hpp"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace qrv::host {
namespace {

using Rgb = std::array<std::uint8_t, 3>;
constexpr Rgb kBlack{0, 0, 0}, kWhite{255, 255, 255}, kRed{230, 0, 40}, kBlue{0, 60, 220};

platform::Raster canvas(int width, int height, const std::function<Rgb(int, int)>& colour) {
    platform::Raster r{width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height * 4, 255)};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Rgb c = colour(x, y);
            std::copy(c.begin(), c.end(), r.rgba.begin() + (static_cast<std::ptrdiff_t>(y) * width + x) * 4);
        }
    return r;
}

platform::Raster plain(int width = 9) {
    return canvas(width, 9, [](int, int) { return kWhite; });
}

// Black on the left, white on the right and one `grey` pixel on the edge at
// (4, 4). With `thinBlack` the black is a one-pixel line beside a checked
// pattern, so only the white side is a flat area.
platform::Raster edge(std::uint8_t grey, bool thinBlack) {
    return canvas(9, 9, [=](int x, int y) -> Rgb {
        if (x == 4 && y == 4) return {grey, grey, grey};
        if (x >= 4) return kWhite;
        if (x == 3 || !thinBlack) return kBlack;
        return (x + y) % 2 ? kRed : kBlue;
    });
}

TEST(ImageDiff, ChangesCountAndAntiAliasingDoesNot) {
    const auto redBlock = canvas(9, 9, [](int x, int y) { return x >= 2 && x <= 4 && y >= 5 ? kRed : kWhite; });
    const auto faint = canvas(9, 9, [](int x, int y) { return x == 4 && y == 4 ? Rgb{250, 250, 250} : kWhite; });
    const struct {
        const char* name;
        platform::Raster baseline, candidate;
        std::size_t changed, antialiased;
        std::array<int, 4> box;  // left, top, width, height
    } cases[] = {
        {"same", redBlock, redBlock, 0, 0, {0, 0, 0, 0}},
        {"a block changes colour", plain(), redBlock, 12, 0, {2, 5, 3, 4}},
        {"a shade below the threshold", plain(), faint, 0, 0, {0, 0, 0, 0}},
        {"an edge pixel between two flat areas", edge(128, false), edge(60, false), 0, 1, {0, 0, 0, 0}},
        {"an edge pixel beside one flat area", edge(128, true), edge(60, true), 0, 1, {0, 0, 0, 0}},
        {"an edge pixel only in the candidate", edge(255, false), edge(60, false), 0, 1, {0, 0, 0, 0}},
        {"a column more", plain(), plain(10), 9, 0, {9, 0, 1, 9}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto diff = compareImages(c.baseline, c.candidate);
        EXPECT_EQ(diff.changedPixels, c.changed);
        EXPECT_EQ(diff.antialiasedPixels, c.antialiased);
        EXPECT_EQ((std::array{diff.left, diff.top, diff.width, diff.height}), c.box);
    }
}

}  // namespace
}  // namespace qrv::host
