// The progress ring. The golden lists show each regime's layers, arcs, clips
// and texts; the rules here are the ones between regimes and the text fitting.
#include "Widget/Calories/AnimatedCircularProgressView.hpp"

#include "tests/Widget/Shared/WidgetGoldenSupport.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using testing::expectGolden;
using testing::recorded;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Size kSize{100, 100};

AnimatedCircularProgressViewConfig config() {
    return AnimatedCircularProgressViewConfig{
        .trackBackgroundColor = Color::fixed({0.9, 0.9, 0.9, 1}, "track"),
        .trackForegroundColor = Color::fixed({0.1, 0.5, 0.4, 1}, "progress"),
        .trackOverageForegroundColor = Color::fixed({0.8, 0.2, 0.1, 1}, "overStripe"),
        .trackOverageBackgroundColor = Color::fixed({1, 0.85, 0.8, 1}, "overGround"),
        .trackWidth = 8,
        .textAccessibilityIdPrefix = "Ring",
        .titleFont = Font::system(20, FontWeight::bold),
        .titleColor = Color::fixed({0, 0, 0, 1}, "title"),
        .subtitleFont = Font::system(10),
        .subtitleColor = Color::fixed({0.4, 0.4, 0.4, 1}, "subtitle"),
    };
}

DisplayList ring(double progress, double reverse = 0, std::string title = "1,234", std::string subtitle = "left") {
    return recorded(AnimatedCircularProgressView{config(), std::move(title), std::move(subtitle), progress, reverse},
                    kSize);
}

TEST(AnimatedCircularProgressView, GoldenRegimes) {
    expectGolden("ring_p033", ring(0.33, 0.1));
    expectGolden("ring_p100", ring(1));
    expectGolden("ring_p150", ring(1.5, 0.2));
    expectGolden("ring_p230", ring(2.3, 0.2));
    expectGolden("ring_nan", ring(kNaN, 0.2));
    expectGolden("ring_neg020", ring(-0.2, 0.1));
    expectGolden("ring_p060_r040", ring(0.6, 0.4));
    expectGolden("ring_p060_r030", ring(0.6, 0.3));
}

TEST(AnimatedCircularProgressView, FromTwoLapsAllIsHatchedAndNaNDrawsLikeZero) {
    EXPECT_EQ(ring(2.0, 0.9), ring(2.3, 0));
    EXPECT_EQ(ring(kNaN, 0.25), ring(0, 0.25));
    EXPECT_EQ(ring(-0.2, 0.25), ring(0, 0.25));
}

TEST(AnimatedCircularProgressView, LongFiguresShrinkToHalfBeforeTruncating) {
    // 68 points of room inside the default padding; at 20 points a character
    // of the test measurer is 12 wide.
    const auto shrunk = ring(0.5, 0, "12,345").texts.at(0);  // 72 wide: shrinks a little
    EXPECT_FALSE(shrunk.truncated);
    EXPECT_LT(shrunk.fontSize, 20);
    EXPECT_GE(shrunk.fontSize, 10);
    const auto cut = ring(0.5, 0, "12,345,678,901").texts.at(0);  // would need less than half
    EXPECT_DOUBLE_EQ(cut.fontSize, 10);
    EXPECT_TRUE(cut.truncated);
}

}  // namespace
}  // namespace qrv::widget
