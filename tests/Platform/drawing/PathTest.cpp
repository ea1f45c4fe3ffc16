// Path geometry: arc normalisation, trimming by length, transforms, and the
// stroke outlines that masks clip to (degenerate arcs included).
#include "Platform/drawing/Path.hpp"

#include <gtest/gtest.h>

#include <numbers>

namespace qrv::platform {
namespace {

constexpr double kPi = std::numbers::pi;

PathArc onlyArc(const Path& p) {
    for (const auto& e : p.elements())
        if (auto* a = std::get_if<PathArc>(&e)) return *a;
    throw std::logic_error("no arc");
}

void expectRectNear(const Rect& a, const Rect& b, double tol = 1e-6) {
    EXPECT_NEAR(a.minX(), b.minX(), tol);
    EXPECT_NEAR(a.minY(), b.minY(), tol);
    EXPECT_NEAR(a.width(), b.width(), tol);
    EXPECT_NEAR(a.height(), b.height(), tol);
}

TEST(Path, ArcsNormaliseTheirSweepLikeTheBackend) {
    struct Case {
        double start, end;
        bool clockwise;
        double sweep;
    };
    const Case cases[] = {
        {0, kPi / 2, true, kPi / 2},          {0, -kPi / 2, true, 3 * kPi / 2},
        {0, kPi / 2, false, -3 * kPi / 2},    {0, -kPi / 2, false, -kPi / 2},
        {0, 5 * kPi, true, 2 * kPi},          {1, 1, true, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.start << " -> " << c.end << (c.clockwise ? " cw" : " ccw"));
        Path p;
        p.addArc({0, 0}, 10, Angle{c.start}, Angle{c.end}, c.clockwise);
        EXPECT_NEAR(onlyArc(p).sweep, c.sweep, 1e-12);
        ASSERT_TRUE(std::holds_alternative<PathMoveTo>(p.elements()[0]));
    }
    // With a current point, the arc is joined by a line to its start.
    Path joined;
    joined.moveTo({0, 0}).addArc({20, 0}, 10, Angle{kPi}, Angle{0}, true);
    ASSERT_EQ(joined.elements().size(), 3U);
    EXPECT_NEAR(std::get<PathLineTo>(joined.elements()[1]).point.x, 10, 1e-12);
    EXPECT_NEAR(std::get<PathLineTo>(joined.elements()[1]).point.y, 0, 1e-12);
}

TEST(Path, TrimKeepsTheRightLengths) {
    const Path circle = Path::ellipse({{0, 0}, {20, 20}});
    EXPECT_NEAR(circle.length(), 2 * kPi * 10, 1e-9);
    EXPECT_EQ(circle.trimmed(0, 1), circle);  // a full trim keeps the figure closed
    EXPECT_TRUE(circle.trimmed(0.4, 0.4).isEmpty());
    const PathArc quarter = onlyArc(circle.trimmed(0.25, 0.5));
    EXPECT_NEAR(quarter.startAngle, kPi / 2, 1e-12);
    EXPECT_NEAR(quarter.sweep, kPi / 2, 1e-12);

    // A 10x10 square is 40 long: 0.1..0.6 runs from (4,0) round the corner to (10,10) and on to (6,10).
    const Path square = Path::rect({{0, 0}, {10, 10}});
    const Path piece = square.trimmed(0.1, 0.6);
    EXPECT_NEAR(piece.length(), 20, 1e-9);
    EXPECT_EQ(std::get<PathMoveTo>(piece.elements().front()).point, (Point{4, 0}));
    EXPECT_EQ(std::get<PathLineTo>(piece.elements().back()).point, (Point{6, 10}));

    // Curves (an ellipse) are trimmed by their measured length too.
    const Path ellipse = Path::ellipse({{0, 0}, {40, 20}});
    EXPECT_NEAR(ellipse.trimmed(0, 0.5).length(), ellipse.length() / 2, ellipse.length() * 1e-3);
}

TEST(Path, TransformsKeepArcsOnlyWhenCirclesStayRound) {
    const Path arc = Path().addArc({10, 10}, 5, Angle{0}, Angle{kPi / 2}, true);
    const PathArc mirrored = onlyArc(arc.transformed(AffineTransform::scaling(1, -1)));
    EXPECT_NEAR(mirrored.sweep, -kPi / 2, 1e-12);
    EXPECT_EQ(mirrored.center, (Point{10, -10}));
    const PathArc turned = onlyArc(arc.transformed(AffineTransform::rotation(kPi / 2)));
    EXPECT_NEAR(turned.startAngle, kPi / 2, 1e-12);
    EXPECT_NEAR(turned.radius, 5, 1e-12);

    const Path stretched = arc.transformed(AffineTransform::scaling(2, 1));
    for (const auto& e : stretched.elements()) EXPECT_FALSE(std::holds_alternative<PathArc>(e));
    expectRectNear(stretched.bounds(), {{20, 10}, {10, 5}}, 1e-6);
}

TEST(Path, StrokeOutlinesCoverWhatTheStrokeCovers) {
    // A quarter arc of radius 10 round the origin from three o'clock to six,
    // stroked 4 wide.
    const Path quarter = Path().addArc({0, 0}, 10, Angle{0}, Angle{kPi / 2}, true);
    struct Case {
        const char* name;
        Path path;
        LineCap cap;
        Rect bounds;
    };
    const Case cases[] = {
        {"butt caps end square with the arc", quarter, LineCap::butt, {{0, 0}, {12, 12}}},
        {"round caps reach back past both ends", quarter, LineCap::round, {{-2, -2}, {14, 14}}},
        {"square caps likewise", quarter, LineCap::square, {{-2, -2}, {14, 14}}},
        {"a counter-clockwise arc gives the same outline",
         Path().addArc({0, 0}, 10, Angle{kPi / 2}, Angle{0}, false), LineCap::butt, {{0, 0}, {12, 12}}},
        {"a line with round caps", Path().moveTo({0, 0}).lineTo({10, 0}), LineCap::round, {{-2, -2}, {14, 4}}},
        {"a full circle is a ring", Path::ellipse({{-10, -10}, {20, 20}}), LineCap::butt, {{-12, -12}, {24, 24}}},
        {"a zero sweep with round caps is a dot", Path().addArc({0, 0}, 10, Angle{0}, Angle{0}, true), LineCap::round,
         {{8, -2}, {4, 4}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        StrokeStyle style;
        style.lineWidth = 4;
        style.lineCap = c.cap;
        auto outline = c.path.strokeOutline(style);
        ASSERT_TRUE(outline.has_value());
        expectRectNear(outline->bounds(), c.bounds);
    }

    StrokeStyle butt;
    butt.lineWidth = 4;
    EXPECT_TRUE(Path().addArc({0, 0}, 10, Angle{0}, Angle{0}, true).strokeOutline(butt)->isEmpty());
    StrokeStyle dashed = butt;
    dashed.dash = {2, 2};
    EXPECT_FALSE(quarter.strokeOutline(dashed).has_value());
    EXPECT_FALSE(Path(quarter).closeSubpath().strokeOutline(butt).has_value());  // a closed partial arc
    EXPECT_FALSE(Path::rect({{0, 0}, {5, 5}}).strokeOutline(butt).has_value());  // joins are not built
}

}  // namespace
}  // namespace qrv::platform
