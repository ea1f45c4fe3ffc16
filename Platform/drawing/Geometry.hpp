#pragma once
// Points, sizes and rectangles in points (not pixels), shared by the timeline
// contexts and the drawing layer.
namespace qrv::platform {

struct Point {
    double x = 0, y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0, height = 0;
    friend bool operator==(const Size&, const Size&) = default;
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
    constexpr bool contains(Point p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace qrv::platform
