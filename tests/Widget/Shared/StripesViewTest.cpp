// The hatched fill: how many stripes, and that the pattern still covers the
// whole frame once turned; the golden list shows where they sit.
#include "Widget/Shared/StripesView.hpp"

#include "Platform/drawing/CairoPainter.hpp"
#include "tests/Widget/Shared/WidgetGoldenSupport.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using testing::recorded;

const Color kGround = Color::fixed({1, 0.9, 0.8, 1}, "ground");
const Color kStripe = Color::fixed({0.9, 0.3, 0.1, 1}, "stripe");

StripesView stripes(double angle, double width, double spacing) {
    return StripesView{.backgroundColor = kGround,
                       .stripeColor = kStripe,
                       .stripeAngle = angle,
                       .stripeWidth = width,
                       .stripeSpacing = spacing};
}

std::vector<Rect> stripeRects(const DisplayList& list) {
    std::vector<Rect> out;
    for (const auto& o : list.ops)
        if (auto* fill = std::get_if<op::FillPath>(&o); fill && fill->color == kStripe) out.push_back(fill->path.bounds());
    return out;
}

TEST(StripesView, CountIsTwiceTheLargerSideOverOnePitchTruncated) {
    struct Case {
        Size size;
        double width, spacing;
        int count;
    } cases[] = {
        {{100, 50}, 4, 6, 20},   // 200 / 10
        {{50, 100}, 4, 6, 20},   // the larger side decides, whichever it is
        {{100, 50}, 4, 2, 33},   // 200 / 6 = 33.3
        {{10, 10}, 4, 2.5, 3},   // 20 / 6.5 = 3.07
        {{0, 0}, 4, 2, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.size.width) + "x" + ::testing::PrintToString(c.size.height));
        EXPECT_EQ(StripesView::stripeCount(c.size, c.width, c.spacing), c.count);
        EXPECT_EQ(stripeRects(recorded(stripes(35, c.width, c.spacing), c.size)).size(),
                  static_cast<std::size_t>(c.count));
    }
}

TEST(StripesView, CoversEveryCornerAtAnyAngle) {
    // Painted, a corner left uncovered would be transparent.
    const Painter painter;
    for (double angle : {0.0, 35.0, 45.0, 90.0, 135.0, -60.0}) {
        SCOPED_TRACE(angle);
        const auto raster = painter.rasterize(recorded(stripes(angle, 4, 6), {100, 50}), 1, ColorScheme::light);
        ASSERT_TRUE(raster.ok()) << raster.error();
        for (auto [x, y] : {std::pair{0, 0}, {99, 0}, {0, 49}, {99, 49}, {50, 25}})
            EXPECT_DOUBLE_EQ(raster.value().pixel(x, y).alpha, 1) << x << "," << y;
    }
}

TEST(StripesView, GoldenSmallPatch) {
    testing::expectGolden("stripes_40x20_35deg", recorded(stripes(35, 4, 2), {40, 20}));
}

TEST(StripesViewDeathTest, NoPositivePitchStopsTheProgram) {
    EXPECT_DEATH(StripesView::stripeCount({10, 10}, 0, 0), "StripesView");
    EXPECT_DEATH(StripesView::stripeCount({10, 10}, 2, -3), "StripesView");
}

}  // namespace
}  // namespace qrv::widget
