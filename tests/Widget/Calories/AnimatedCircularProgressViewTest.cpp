// The progress ring. The golden lists show each regime's layers, arcs, clips
// and texts; the rules here are the ones between regimes and the text fitting.
#include "Widget/Calories/AnimatedCircularProgressView.hpp"

#include "tests/Widget/Shared/WidgetGoldenSupport.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using testing::expectGolden;
using testing::recorded;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTurn = 2 * std::numbers::pi;
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

// Strokes in drawing order whose colour has the given palette name.
std::vector<op::StrokePath> strokes(const DisplayList& list, const std::string& colorName) {
    std::vector<op::StrokePath> out;
    for (const auto& o : list.ops)
        if (auto* s = std::get_if<op::StrokePath>(&o); s && s->color.name == colorName) out.push_back(*s);
    return out;
}
const PathArc& onlyArc(const op::StrokePath& s) { return std::get<PathArc>(s.path.elements().at(1)); }

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

TEST(AnimatedCircularProgressView, RightToLeftMirrorsTheStackPaddingAndTextButNotTheRing) {
    // A ring and a text side by side, 10 points of leading and 2 of trailing
    // padding, centred in a 100 × 40 widget: 14 points to spare on each side.
    // The text ("ab" over "c", 12 wide, 6 per character) sits centred in its
    // 20-point frame; its short line starts at its leading edge.
    const View row = HStack({AnimatedCircularProgressView{config(), "1", "2", 0.6, 0}.body().frame(40, 40),
                             Text("ab c").font(Font::system(10)).frame(20, 30)},
                            VerticalAlignment::center, 0)
                         .padding(EdgeInsets{.leading = 10, .trailing = 2});
    struct Case {
        LayoutDirection direction;
        double ringCentreX, shortLineX;
    } cases[] = {
        {LayoutDirection::leftToRight, 14 + 10 + 20, 14 + 10 + 40 + 4},
        {LayoutDirection::rightToLeft, 14 + 2 + 20 + 20, 14 + 2 + 4 + 12 - 6},
    };
    static const FixedAdvanceTextMeasurer measurer;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.direction == LayoutDirection::rightToLeft ? "right to left" : "left to right");
        RenderOptions options;
        options.size = {100, 40};
        options.layoutDirection = c.direction;
        const DisplayList list = render(row, options, measurer);
        const auto arcs = strokes(list, "progress");
        ASSERT_EQ(arcs.size(), 2u);
        // Still from twelve o'clock, clockwise, whichever way the row runs.
        EXPECT_NEAR(onlyArc(arcs[0]).startAngle, -kTurn / 4, 1e-9);
        EXPECT_NEAR(onlyArc(arcs[0]).sweep, 0.6 * kTurn, 1e-9);
        EXPECT_DOUBLE_EQ(onlyArc(arcs[0]).center.x, c.ringCentreX);
        const auto* shortLine = std::get_if<op::DrawText>(&list.ops.back());
        ASSERT_TRUE(shortLine && shortLine->text == "c");
        EXPECT_DOUBLE_EQ(shortLine->origin.x, c.shortLineX);
    }
}

}  // namespace
}  // namespace qrv::widget
