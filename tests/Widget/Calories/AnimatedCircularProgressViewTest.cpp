// The progress ring: which layers each regime draws, where its arcs start and
// which way they run, the clip of the hatched overage, and the texts.
#include "Widget/Calories/AnimatedCircularProgressView.hpp"

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "tests/Widget/Shared/WidgetGoldenSupport.hpp"

#include <gtest/gtest.h>

#include <cmath>
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

AnimatedCircularProgressViewConfig config(std::string prefix = "Ring") {
    return AnimatedCircularProgressViewConfig{
        .trackBackgroundColor = Color::fixed({0.9, 0.9, 0.9, 1}, "track"),
        .trackForegroundColor = Color::fixed({0.1, 0.5, 0.4, 1}, "progress"),
        .trackOverageForegroundColor = Color::fixed({0.8, 0.2, 0.1, 1}, "overStripe"),
        .trackOverageBackgroundColor = Color::fixed({1, 0.85, 0.8, 1}, "overGround"),
        .trackWidth = 8,
        .textAccessibilityIdPrefix = std::move(prefix),
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
const PathArc& onlyArc(const op::StrokePath& s) {
    const auto& els = s.path.elements();
    return std::get<PathArc>(els.at(1));
}
std::size_t clips(const DisplayList& list) {
    std::size_t n = 0;
    for (const auto& o : list.ops) n += std::holds_alternative<op::ClipPath>(o);
    return n;
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

TEST(AnimatedCircularProgressView, LayersByRegime) {
    struct Case {
        double p, r;
        std::size_t progressStrokes, exerciseStrokes, shadowStrokes, clipCount;
    } cases[] = {
        {0.33, 0.1, 2, 1, 0, 0},
        {1.0, 0.0, 2, 0, 1, 0},    // a full lap ends where exercise (none) would begin: edge drawn, no stripes
        {0.6, 0.4, 2, 1, 2, 0},    // the arcs meet
        {0.6, 0.3, 2, 1, 0, 0},    // they do not
        {1.5, 0.2, 1, 0, 2, 1},    // first lap in the foreground, hatched overage, no exercise
        {2.0, 0.3, 0, 0, 0, 1},    // all hatched
        {2.3, 0.9, 0, 0, 0, 1},
        {kNaN, 0.2, 0, 1, 0, 0},   // regime of the first lap, nothing to show for progress
        {-0.2, 0.1, 0, 1, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "p=" << c.p << " r=" << c.r);
        const DisplayList list = ring(c.p, c.r);
        EXPECT_EQ(strokes(list, "progress").size(), c.progressStrokes);
        EXPECT_EQ(strokes(list, "exercise").size(), c.exerciseStrokes);
        EXPECT_EQ(strokes(list, "neutralsMidground2").size(), c.shadowStrokes);
        EXPECT_EQ(clips(list), c.clipCount);
        EXPECT_EQ(strokes(list, "track").size(), c.p <= 1 || std::isnan(c.p) ? 1u : 0u);
    }
}

TEST(AnimatedCircularProgressView, ReverseProgressIsIgnoredFromTwoLapsAndNaNDrawsLikeZero) {
    EXPECT_EQ(ring(2.3, 0.9), ring(2.3, 0));
    EXPECT_EQ(ring(kNaN, 0.25), ring(0, 0.25));
    EXPECT_EQ(ring(-0.2, 0.25), ring(0, 0.25));
}

TEST(AnimatedCircularProgressView, ProgressRunsClockwiseFromTwelveWithARoundEnd) {
    const auto arcs = strokes(ring(0.6, 0.1), "progress");
    ASSERT_EQ(arcs.size(), 2u);
    const PathArc& flat = onlyArc(arcs[0]);
    const PathArc& round = onlyArc(arcs[1]);
    EXPECT_EQ(arcs[0].style.lineCap, LineCap::butt);
    EXPECT_EQ(arcs[1].style.lineCap, LineCap::round);
    EXPECT_NEAR(flat.startAngle, -kTurn / 4, 1e-9);
    EXPECT_NEAR(flat.sweep, 0.6 * kTurn, 1e-9);
    EXPECT_NEAR(round.startAngle, -kTurn / 4 + 0.3 * kTurn, 1e-9);
    EXPECT_NEAR(round.sweep, 0.3 * kTurn, 1e-9);
    // A circle filling the 100-point view, stroked as the config says.
    EXPECT_EQ(flat.center, (Point{50, 50}));
    EXPECT_DOUBLE_EQ(flat.radius, 50);
    EXPECT_EQ(arcs[0].style, (StrokeStyle{.lineWidth = 8, .lineJoin = LineJoin::miter, .miterLimit = 10}));
}

TEST(AnimatedCircularProgressView, ExerciseRunsCounterClockwiseFromTwelve) {
    const auto arcs = strokes(ring(0.2, 0.25), "exercise");
    ASSERT_EQ(arcs.size(), 1u);
    const PathArc& a = onlyArc(arcs[0]);
    EXPECT_NEAR(std::remainder(a.startAngle + kTurn / 4, kTurn), 0, 1e-9);
    EXPECT_NEAR(a.sweep, -0.25 * kTurn, 1e-9);
    EXPECT_EQ(arcs[0].color, catalog::QRVColor::exercise());
}

TEST(AnimatedCircularProgressView, EndShadowLiesUnderTheArcAndReachesJustPastIt) {
    const DisplayList list = ring(1.5, 0);
    const auto shadow = strokes(list, "neutralsMidground2");
    ASSERT_EQ(shadow.size(), 2u);
    EXPECT_NEAR(onlyArc(shadow[0]).sweep, 0.5 * kTurn, 1e-9);
    EXPECT_EQ(shadow[1].style.lineCap, LineCap::round);
    EXPECT_NEAR(onlyArc(shadow[1]).startAngle, -kTurn / 4 + 0.5 * kTurn, 1e-9);
    EXPECT_NEAR(onlyArc(shadow[1]).sweep, 0.015 * kTurn, 1e-9);
    // Beneath: every shadow stroke comes before the clip of the hatching.
    std::size_t lastShadow = 0, firstClip = 0;
    for (std::size_t i = 0; i < list.ops.size(); ++i) {
        if (auto* s = std::get_if<op::StrokePath>(&list.ops[i]); s && s->color.name == "neutralsMidground2") lastShadow = i;
        if (std::holds_alternative<op::ClipPath>(list.ops[i]) && firstClip == 0) firstClip = i;
    }
    EXPECT_LT(lastShadow, firstClip);
}

TEST(AnimatedCircularProgressView, TextsAreCentredAndIdentified) {
    const DisplayList list = recorded(
        AnimatedCircularProgressView{config("MacroStatsView"), "120", "/200g", 0.6, 0}, kSize);
    ASSERT_EQ(list.texts.size(), 2u);
    EXPECT_EQ(list.texts[0].accessibilityIdentifier, "MacroStatsView_progressViewTitle");
    EXPECT_EQ(list.texts[1].accessibilityIdentifier, "MacroStatsView_progressViewSubtitle");
    EXPECT_LT(list.texts[0].rect.maxY(), list.texts[1].rect.minY());  // title over subtitle
    for (const auto& t : list.texts) EXPECT_DOUBLE_EQ(t.rect.midX(), 50);
    EXPECT_DOUBLE_EQ((list.texts[0].rect.minY() + list.texts[1].rect.maxY()) / 2, 50);
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
