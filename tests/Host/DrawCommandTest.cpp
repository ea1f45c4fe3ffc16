// qrv-widgets draw ring: the image it writes (size, the arcs where they
// belong, the hatching kept inside the track) and its usage errors.
#include "Platform/drawing/CairoPainter.hpp"
#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "tests/Host/HostTestSupport.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace qrv::host {
namespace {

using namespace qrv::platform;
using catalog::QRVColor;

bool near(const Rgba& a, const Rgba& b) {
    constexpr double kTolerance = 3.0 / 255;
    return std::abs(a.red - b.red) <= kTolerance && std::abs(a.green - b.green) <= kTolerance &&
           std::abs(a.blue - b.blue) <= kTolerance && std::abs(a.alpha - b.alpha) <= kTolerance;
}

class DrawRing : public ::testing::Test {
protected:
    test::HostWorld world;

    Raster draw(std::vector<std::string> args) {
        const auto out = (world.folder.path() / "ring.png").string();
        args.insert(args.begin(), {"draw", "ring", "--out", out});
        const auto run = world.run(args, false);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        const std::string bytes = test::slurp(out);
        auto raster = decodePNG(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
        EXPECT_TRUE(raster.ok()) << raster.error();
        return raster.ok() ? raster.value() : Raster{};
    }

    // The pixel on the track's centre line at a fraction of a turn clockwise
    // from twelve o'clock, or `outside` points beyond it. The default image is
    // 166 points at 3x; the ring is inset by its 8-point track width.
    static Rgba onRing(const Raster& r, double fraction, double outside = 0) {
        const double angle = -std::numbers::pi / 2 + fraction * 2 * std::numbers::pi;
        const double radius = 75 + outside;
        return r.pixel(static_cast<int>(std::lround((83 + radius * std::cos(angle)) * 3)),
                       static_cast<int>(std::lround((83 + radius * std::sin(angle)) * 3)));
    }
};

TEST_F(DrawRing, FirstLapShowsProgressExerciseAndTrack) {
    const Raster r = draw({"--progress", "0.3", "--reverse", "0.2", "--title", "1,234"});
    ASSERT_EQ(r.width, 498);
    ASSERT_EQ(r.height, 498);
    EXPECT_TRUE(near(onRing(r, 0.15), QRVColor::brandSecondary().light));
    EXPECT_TRUE(near(onRing(r, 0.9), QRVColor::exercise().light));  // counter-clockwise from twelve
    EXPECT_TRUE(near(onRing(r, 0.5), QRVColor::neutralsBackground().light));
}

TEST_F(DrawRing, OverageIsHatchedOnlyInsideTheTrack) {
    const Raster r = draw({"--progress", "1.5", "--scheme", "dark"});
    const Rgba stripe = QRVColor::brandPrimaryTxt().dark, ground = QRVColor::brandSecondaryBG().dark;
    int hatched = 0;
    for (double f = 0.05; f < 0.45; f += 0.01) {
        const Rgba p = onRing(r, f);
        hatched += near(p, stripe) || near(p, ground);
        // Past the stroke's outer edge the widget's ground shows, not stripes.
        EXPECT_TRUE(near(onRing(r, f, 5.5), QRVColor::neutralsMidground2().dark)) << f;
    }
    EXPECT_GT(hatched, 30);
    EXPECT_TRUE(near(onRing(r, 0.75), QRVColor::brandSecondary().dark));  // the completed first lap
}

TEST_F(DrawRing, BadArgumentsAreUsageErrors) {
    const auto out = (world.folder.path() / "ring").string();
    for (const auto& args : std::vector<std::vector<std::string>>{
             {"draw", "ring", "--progress", "abc", "--out", out + ".png"},
             {"draw", "ring", "--progress", "1", "--out", out + ".jpg"},
             {"draw", "ring", "--progress", "1", "--scheme", "sepia", "--out", out + ".png"},
             {"draw", "ring", "--progress", "1", "--scale", "4", "--out", out + ".png"},
             {"draw", "ring", "--out", out + ".png"},
         }) {
        const auto run = world.run(args, false);
        EXPECT_EQ(run.exitCode, 2) << args[3] << " " << run.err;
        EXPECT_FALSE(run.err.empty());
    }
    EXPECT_FALSE(std::filesystem::exists(out + ".png"));
}

}  // namespace
}  // namespace qrv::host
