#pragma once
// Points, sizes and rectangles in points (not pixels), shared by the timeline
// contexts and the drawing layer; plus the few geometric values the view tree
// speaks in: edge insets, unit points, angles and affine transforms.
//
// Coordinates are y-down (origin at the top-left corner, as on the screen).
// Angles are in radians, 0 along +x, growing towards +y, which is clockwise
// on the screen.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace qrv::platform {

// "As large as offered": frame(maxWidth: infinity) and friends.
inline constexpr double infinity = std::numeric_limits<double>::infinity();

struct Point {
    double x = 0, y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0, height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

// Distances by which a rectangle shrinks on each edge (leading is left,
// trailing is right: the widgets are laid out left to right).
struct EdgeInsets {
    double top = 0, leading = 0, bottom = 0, trailing = 0;

    static constexpr EdgeInsets all(double length) { return {length, length, length, length}; }
    constexpr double horizontal() const { return leading + trailing; }
    constexpr double vertical() const { return top + bottom; }
    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

struct Rect {
    Point origin;
    Size size;

    constexpr double minX() const { return origin.x; }
    constexpr double minY() const { return origin.y; }
    constexpr double maxX() const { return origin.x + size.width; }
    constexpr double maxY() const { return origin.y + size.height; }
    constexpr double midX() const { return origin.x + size.width / 2; }
    constexpr double midY() const { return origin.y + size.height / 2; }
    constexpr double width() const { return size.width; }
    constexpr double height() const { return size.height; }
    constexpr Point center() const { return {midX(), midY()}; }
    constexpr bool contains(Point p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }
    constexpr bool isEmpty() const { return size.width <= 0 || size.height <= 0; }

    // Shrunk by the insets; never below zero width or height.
    constexpr Rect inset(EdgeInsets e) const {
        return {{origin.x + e.leading, origin.y + e.top},
                {std::max(0.0, size.width - e.horizontal()), std::max(0.0, size.height - e.vertical())}};
    }
    constexpr Rect insetBy(double dx, double dy) const { return inset({dy, dx, dy, dx}); }
    constexpr Rect offsetBy(double dx, double dy) const { return {{origin.x + dx, origin.y + dy}, size}; }
    // Smallest rectangle holding both.
    constexpr Rect united(const Rect& o) const {
        double x0 = std::min(minX(), o.minX()), y0 = std::min(minY(), o.minY());
        double x1 = std::max(maxX(), o.maxX()), y1 = std::max(maxY(), o.maxY());
        return {{x0, y0}, {x1 - x0, y1 - y0}};
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

// A point in a rectangle's own unit square: (0,0) top-leading, (1,1)
// bottom-trailing. Anchors of rotations and scales.
struct UnitPoint {
    double x = 0.5, y = 0.5;

    static constexpr UnitPoint center() { return {0.5, 0.5}; }
    static constexpr UnitPoint topLeading() { return {0, 0}; }
    static constexpr UnitPoint top() { return {0.5, 0}; }
    static constexpr UnitPoint bottom() { return {0.5, 1}; }
    static constexpr UnitPoint leading() { return {0, 0.5}; }
    static constexpr UnitPoint trailing() { return {1, 0.5}; }
    constexpr Point in(const Rect& r) const { return {r.minX() + x * r.width(), r.minY() + y * r.height()}; }
    friend bool operator==(const UnitPoint&, const UnitPoint&) = default;
};

// An angle; positive turns clockwise on the screen.
struct Angle {
    double radians = 0;

    static constexpr Angle degrees(double d) { return {d * std::numbers::pi / 180}; }
    static constexpr Angle fromRadians(double r) { return {r}; }
    constexpr double degreesValue() const { return radians * 180 / std::numbers::pi; }
    friend bool operator==(const Angle&, const Angle&) = default;
};

// x' = a·x + c·y + tx,  y' = b·x + d·y + ty  (the same layout as cairo_matrix_t).
struct AffineTransform {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

    static constexpr AffineTransform identity() { return {}; }
    static constexpr AffineTransform translation(double dx, double dy) { return {1, 0, 0, 1, dx, dy}; }
    static constexpr AffineTransform scaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
    static AffineTransform rotation(double radians) {
        double s = std::sin(radians), co = std::cos(radians);
        return {co, s, -s, co, 0, 0};
    }
    // `this` applied first, then `next`.
    constexpr AffineTransform then(const AffineTransform& n) const {
        return {a * n.a + b * n.c,          a * n.b + b * n.d,          c * n.a + d * n.c,
                c * n.b + d * n.d,          tx * n.a + ty * n.c + n.tx, tx * n.b + ty * n.d + n.ty};
    }
    constexpr Point apply(Point p) const { return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
    // The axis-aligned bounds of the transformed rectangle.
    constexpr Rect mapRect(const Rect& r) const {
        Point p[4] = {apply({r.minX(), r.minY()}), apply({r.maxX(), r.minY()}), apply({r.minX(), r.maxY()}),
                      apply({r.maxX(), r.maxY()})};
        double x0 = p[0].x, x1 = p[0].x, y0 = p[0].y, y1 = p[0].y;
        for (const auto& q : p) {
            x0 = std::min(x0, q.x), x1 = std::max(x1, q.x);
            y0 = std::min(y0, q.y), y1 = std::max(y1, q.y);
        }
        return {{x0, y0}, {x1 - x0, y1 - y0}};
    }
    constexpr double determinant() const { return a * d - b * c; }
    constexpr bool isIdentity() const { return *this == AffineTransform{}; }
    // True when circles stay circles (rotation, uniform scale, mirror, translation).
    bool isSimilarity() const {
        double eps = 1e-9 * std::max(1.0, std::abs(determinant()));
        return std::abs(a * a + b * b - (c * c + d * d)) <= eps && std::abs(a * c + b * d) <= eps;
    }
    friend bool operator==(const AffineTransform&, const AffineTransform&) = default;
};

}  // namespace qrv::platform
