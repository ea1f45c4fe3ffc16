#pragma once
// Path: an outline made of straight lines, cubic curves and circular arcs, in
// points, y-down. Shapes build one for their frame; draw ops carry them.
//
// Arc convention (the same as the painter's backend): angles in radians, 0
// along +x, growing towards +y, which is clockwise on the screen. An arc is
// stored as a start angle and a signed sweep (positive = clockwise on the
// screen) and always begins at the path's current point: addArc() draws a
// line from the current point to the arc's start, or starts a new subpath
// there when there is no current point (an empty path, or after a close).
//
// Built-in figures are wound clockwise on the screen, so several of them can
// be filled or clipped together with the non-zero rule.
#include "Platform/drawing/Geometry.hpp"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace qrv::platform {

enum class LineCap { butt, round, square };
enum class LineJoin { miter, round, bevel };

// How a path is stroked. The defaults are the platform's: width 1, butt caps,
// miter joins, miter limit 10, no dash.
struct StrokeStyle {
    double lineWidth = 1;
    LineCap lineCap = LineCap::butt;
    LineJoin lineJoin = LineJoin::miter;
    double miterLimit = 10;
    std::vector<double> dash{};  // on/off lengths; empty = solid
    double dashPhase = 0;
    friend bool operator==(const StrokeStyle&, const StrokeStyle&) = default;
};

enum class FillRule { nonZero, evenOdd };

struct PathMoveTo {
    Point point{};
    friend bool operator==(const PathMoveTo&, const PathMoveTo&) = default;
};
struct PathLineTo {
    Point point{};
    friend bool operator==(const PathLineTo&, const PathLineTo&) = default;
};
struct PathCurveTo {
    Point control1{}, control2{}, point{};
    friend bool operator==(const PathCurveTo&, const PathCurveTo&) = default;
};
// Starts at the current point, which is the point at `startAngle`.
struct PathArc {
    Point center{};
    double radius = 0;
    double startAngle = 0;
    double sweep = 0;  // signed, |sweep| <= 2π
    Point pointAt(double angle) const;
    Point endPoint() const { return pointAt(startAngle + sweep); }
    friend bool operator==(const PathArc&, const PathArc&) = default;
};
struct PathClose {
    friend bool operator==(const PathClose&, const PathClose&) = default;
};
using PathElement = std::variant<PathMoveTo, PathLineTo, PathCurveTo, PathArc, PathClose>;

class Path {
public:
    Path() = default;

    // Builders return *this so a path reads as one expression.
    Path& moveTo(Point p);
    Path& lineTo(Point p);
    Path& addCurve(Point to, Point control1, Point control2);
    Path& addQuadCurve(Point to, Point control);
    // Clockwise = clockwise on the screen (angles growing). As on the backend,
    // a clockwise arc whose end lies before its start runs on to the end's next
    // turn; a sweep is never more than one full turn.
    Path& addArc(Point center, double radius, Angle start, Angle end, bool clockwise);
    Path& closeSubpath();
    Path& addRect(const Rect& r);
    Path& addRoundedRect(const Rect& r, double cornerRadius);
    // A full ellipse in `r`, starting at the right-hand end of its horizontal
    // axis and running clockwise; a circle when `r` is square.
    Path& addEllipse(const Rect& r);
    Path& addPath(const Path& other);

    static Path rect(const Rect& r) { return Path().addRect(r); }
    static Path roundedRect(const Rect& r, double cornerRadius) { return Path().addRoundedRect(r, cornerRadius); }
    static Path ellipse(const Rect& r) { return Path().addEllipse(r); }

    const std::vector<PathElement>& elements() const { return elements_; }
    bool isEmpty() const { return elements_.empty(); }
    std::optional<Point> currentPoint() const;
    // Bounds of the outline's points (arcs and curves included exactly enough
    // for hit testing and dumps).
    Rect bounds() const;
    // Total length of all segments, closing lines included.
    double length() const;

    // The part between two fractions of the length, 0 <= from <= to <= 1
    // (clamped). A full trim returns the path unchanged so a closed figure stays
    // closed; an empty range returns an empty path.
    Path trimmed(double from, double to) const;
    // Arcs stay arcs under similarity transforms and become curves otherwise.
    Path transformed(const AffineTransform& t) const;
    // Arcs as cubic curves (for backends or transforms that need them).
    Path flattenedArcs() const;

    // The area a stroke covers, as a fillable outline wound clockwise, for
    // clipping to a stroke. Supported when every subpath is one arc (a closed
    // full circle gives a ring) or one straight line and the stroke has no dash;
    // nothing otherwise.
    std::optional<Path> strokeOutline(const StrokeStyle& style) const;

    friend bool operator==(const Path&, const Path&) = default;

private:
    std::vector<PathElement> elements_{};
    std::optional<Point> current_{};
    std::optional<Point> subpathStart_{};
};

}  // namespace qrv::platform
