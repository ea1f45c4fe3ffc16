#include "Platform/drawing/Path.hpp"

#include <array>
#include <cmath>
#include <numbers>

namespace qrv::platform {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kEpsilon = 1e-9;

Point lerp(Point a, Point b, double t) { return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}; }
double distance(Point a, Point b) { return std::hypot(b.x - a.x, b.y - a.y); }
bool near(Point a, Point b) { return distance(a, b) <= 1e-9; }
Point polar(Point c, double r, double angle) { return {c.x + r * std::cos(angle), c.y + r * std::sin(angle)}; }

Point cubicAt(Point p0, Point p1, Point p2, Point p3, double t) {
    double u = 1 - t;
    double a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
    return {a * p0.x + b * p1.x + c * p2.x + d * p3.x, a * p0.y + b * p1.y + c * p2.y + d * p3.y};
}

// Curves are measured as 32 chords: plenty for trimming the gentle curves of
// ellipses and rounded corners.
constexpr int kCurveSteps = 32;

double cubicLength(Point p0, const PathCurveTo& c) {
    double total = 0;
    Point prev = p0;
    for (int i = 1; i <= kCurveSteps; ++i) {
        Point q = cubicAt(p0, c.control1, c.control2, c.point, static_cast<double>(i) / kCurveSteps);
        total += distance(prev, q);
        prev = q;
    }
    return total;
}

// The curve parameter at which `target` of the curve's length is reached.
double cubicParameterAtLength(Point p0, const PathCurveTo& c, double target) {
    double total = 0;
    Point prev = p0;
    for (int i = 1; i <= kCurveSteps; ++i) {
        double t = static_cast<double>(i) / kCurveSteps;
        Point q = cubicAt(p0, c.control1, c.control2, c.point, t);
        double step = distance(prev, q);
        if (total + step >= target && step > 0) return t - (1.0 - (target - total) / step) / kCurveSteps;
        total += step;
        prev = q;
    }
    return 1;
}

// The part of a cubic between parameters t0 < t1 (de Casteljau, twice).
PathCurveTo cubicBetween(Point p0, const PathCurveTo& c, double t0, double t1, Point& start) {
    auto split = [](std::array<Point, 4> q, double t, bool keepSecond) {
        Point a = lerp(q[0], q[1], t), b = lerp(q[1], q[2], t), cc = lerp(q[2], q[3], t);
        Point d = lerp(a, b, t), e = lerp(b, cc, t), f = lerp(d, e, t);
        return keepSecond ? std::array<Point, 4>{f, e, cc, q[3]} : std::array<Point, 4>{q[0], a, d, f};
    };
    std::array<Point, 4> q{p0, c.control1, c.control2, c.point};
    q = split(q, t1, false);
    if (t1 > 0) q = split(q, t0 / t1, true);
    start = q[0];
    return PathCurveTo{q[1], q[2], q[3]};
}

// Appends an arc as cubic curves of at most a quarter turn each.
void appendArcAsCurves(std::vector<PathElement>& out, const PathArc& arc) {
    int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(arc.sweep) / (std::numbers::pi / 2) - 1e-9)));
    double delta = arc.sweep / pieces;
    double k = 4.0 / 3.0 * std::tan(delta / 4);
    for (int i = 0; i < pieces; ++i) {
        double a0 = arc.startAngle + delta * i, a1 = a0 + delta;
        Point p0 = arc.pointAt(a0), p3 = arc.pointAt(a1);
        Point p1{p0.x - k * arc.radius * std::sin(a0), p0.y + k * arc.radius * std::cos(a0)};
        Point p2{p3.x + k * arc.radius * std::sin(a1), p3.y - k * arc.radius * std::cos(a1)};
        out.emplace_back(PathCurveTo{p1, p2, p3});
    }
}

}  // namespace

Point PathArc::pointAt(double angle) const { return polar(center, radius, angle); }

Path& Path::moveTo(Point p) {
    elements_.emplace_back(PathMoveTo{p});
    current_ = p;
    subpathStart_ = p;
    return *this;
}

Path& Path::lineTo(Point p) {
    if (!current_) return moveTo(p);
    elements_.emplace_back(PathLineTo{p});
    current_ = p;
    return *this;
}

Path& Path::addCurve(Point to, Point control1, Point control2) {
    if (!current_) moveTo(control1);
    elements_.emplace_back(PathCurveTo{control1, control2, to});
    current_ = to;
    return *this;
}

Path& Path::addQuadCurve(Point to, Point control) {
    Point from = current_.value_or(control);
    Point c1 = lerp(from, control, 2.0 / 3.0), c2 = lerp(to, control, 2.0 / 3.0);
    return addCurve(to, c1, c2);
}

Path& Path::addArc(Point center, double radius, Angle start, Angle end, bool clockwise) {
    radius = std::max(0.0, radius);
    double sweep = end.radians - start.radians;
    if (clockwise) {
        while (sweep < 0) sweep += kTwoPi;
        sweep = std::min(sweep, kTwoPi);
    } else {
        while (sweep > 0) sweep -= kTwoPi;
        sweep = std::max(sweep, -kTwoPi);
    }
    PathArc arc{center, radius, start.radians, sweep};
    Point from = arc.pointAt(start.radians);
    if (!current_)
        moveTo(from);
    else if (!near(*current_, from))
        lineTo(from);
    elements_.emplace_back(arc);
    current_ = arc.endPoint();
    return *this;
}

Path& Path::closeSubpath() {
    if (!current_) return *this;
    elements_.emplace_back(PathClose{});
    // Unlike the backend, a close leaves no current point: whatever follows
    // begins its own subpath with a move, so every subpath is explicit.
    current_.reset();
    return *this;
}

Path& Path::addRect(const Rect& r) {
    moveTo({r.minX(), r.minY()});
    lineTo({r.maxX(), r.minY()});
    lineTo({r.maxX(), r.maxY()});
    lineTo({r.minX(), r.maxY()});
    return closeSubpath();
}

Path& Path::addRoundedRect(const Rect& r, double cornerRadius) {
    double rad = std::clamp(cornerRadius, 0.0, std::min(r.width(), r.height()) / 2);
    if (rad <= 0) return addRect(r);
    constexpr double q = std::numbers::pi / 2;
    moveTo({r.minX() + rad, r.minY()});
    lineTo({r.maxX() - rad, r.minY()});
    addArc({r.maxX() - rad, r.minY() + rad}, rad, Angle{-q}, Angle{0}, true);
    lineTo({r.maxX(), r.maxY() - rad});
    addArc({r.maxX() - rad, r.maxY() - rad}, rad, Angle{0}, Angle{q}, true);
    lineTo({r.minX() + rad, r.maxY()});
    addArc({r.minX() + rad, r.maxY() - rad}, rad, Angle{q}, Angle{2 * q}, true);
    lineTo({r.minX(), r.minY() + rad});
    addArc({r.minX() + rad, r.minY() + rad}, rad, Angle{2 * q}, Angle{3 * q}, true);
    return closeSubpath();
}

Path& Path::addEllipse(const Rect& r) {
    if (std::abs(r.width() - r.height()) <= kEpsilon) {
        current_.reset();
        addArc(r.center(), r.width() / 2, Angle{0}, Angle{kTwoPi}, true);
        return closeSubpath();
    }
    // Four quarter curves; k is the usual circle-approximation constant.
    constexpr double k = 0.5522847498307936;
    double cx = r.midX(), cy = r.midY(), rx = r.width() / 2, ry = r.height() / 2;
    moveTo({r.maxX(), cy});
    addCurve({cx, r.maxY()}, {r.maxX(), cy + k * ry}, {cx + k * rx, r.maxY()});
    addCurve({r.minX(), cy}, {cx - k * rx, r.maxY()}, {r.minX(), cy + k * ry});
    addCurve({cx, r.minY()}, {r.minX(), cy - k * ry}, {cx - k * rx, r.minY()});
    addCurve({r.maxX(), cy}, {cx + k * rx, r.minY()}, {r.maxX(), cy - k * ry});
    return closeSubpath();
}

Path& Path::addPath(const Path& other) {
    elements_.insert(elements_.end(), other.elements_.begin(), other.elements_.end());
    current_ = other.current_;
    subpathStart_ = other.subpathStart_;
    return *this;
}

std::optional<Point> Path::currentPoint() const { return current_; }

Rect Path::bounds() const {
    bool any = false;
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    auto add = [&](Point p) {
        if (!any) {
            x0 = x1 = p.x, y0 = y1 = p.y;
            any = true;
        }
        x0 = std::min(x0, p.x), x1 = std::max(x1, p.x), y0 = std::min(y0, p.y), y1 = std::max(y1, p.y);
    };
    for (const auto& e : elements_) {
        if (auto* m = std::get_if<PathMoveTo>(&e)) add(m->point);
        if (auto* l = std::get_if<PathLineTo>(&e)) add(l->point);
        if (auto* c = std::get_if<PathCurveTo>(&e)) add(c->control1), add(c->control2), add(c->point);
        if (auto* a = std::get_if<PathArc>(&e)) {
            double lo = std::min(a->startAngle, a->startAngle + a->sweep);
            double hi = std::max(a->startAngle, a->startAngle + a->sweep);
            add(a->pointAt(lo)), add(a->pointAt(hi));
            for (double q = std::ceil(lo / (std::numbers::pi / 2)) * (std::numbers::pi / 2); q < hi;
                 q += std::numbers::pi / 2)
                add(a->pointAt(q));
        }
    }
    return any ? Rect{{x0, y0}, {x1 - x0, y1 - y0}} : Rect{};
}

double Path::length() const {
    double total = 0;
    Point cur{}, start{};
    for (const auto& e : elements_) {
        std::visit(
            [&](const auto& el) {
                using T = std::decay_t<decltype(el)>;
                if constexpr (std::is_same_v<T, PathMoveTo>) {
                    cur = start = el.point;
                } else if constexpr (std::is_same_v<T, PathLineTo>) {
                    total += distance(cur, el.point);
                    cur = el.point;
                } else if constexpr (std::is_same_v<T, PathCurveTo>) {
                    total += cubicLength(cur, el);
                    cur = el.point;
                } else if constexpr (std::is_same_v<T, PathArc>) {
                    total += el.radius * std::abs(el.sweep);
                    cur = el.endPoint();
                } else {
                    total += distance(cur, start);
                    cur = start;
                }
            },
            e);
    }
    return total;
}

Path Path::trimmed(double from, double to) const {
    from = std::isnan(from) ? 0 : std::clamp(from, 0.0, 1.0);
    to = std::isnan(to) ? 0 : std::clamp(to, 0.0, 1.0);
    if (from <= 0 && to >= 1) return *this;
    Path out;
    double total = length();
    if (to <= from || total <= 0) return out;
    double lo = from * total, hi = to * total;

    double walked = 0;
    Point cur{}, start{};
    bool penDown = false;  // the last emitted piece ends where the next segment begins
    auto emitStart = [&](Point p) {
        if (!penDown) out.moveTo(p);
        penDown = true;
    };
    // Visits one segment of length `len` starting at `cur`; `emit` receives the
    // local range [a, b] (as lengths along the segment) to keep.
    auto visit = [&](double len, auto&& emit) {
        double s0 = walked, s1 = walked + len;
        double a = std::max(lo, s0), b = std::min(hi, s1);
        if (b - a > 1e-12)
            emit(a - s0, b - s0);
        else if (len > 0)
            penDown = false;
        walked = s1;
    };
    for (const auto& e : elements_) {
        if (auto* m = std::get_if<PathMoveTo>(&e)) {
            cur = start = m->point;
            penDown = false;
        } else if (auto* l = std::get_if<PathLineTo>(&e)) {
            double len = distance(cur, l->point);
            visit(len, [&](double a, double b) {
                emitStart(lerp(cur, l->point, a / len));
                out.lineTo(lerp(cur, l->point, b / len));
            });
            cur = l->point;
        } else if (auto* c = std::get_if<PathCurveTo>(&e)) {
            double len = cubicLength(cur, *c);
            visit(len, [&](double a, double b) {
                double t0 = a <= 0 ? 0 : cubicParameterAtLength(cur, *c, a);
                double t1 = b >= len ? 1 : cubicParameterAtLength(cur, *c, b);
                Point s;
                PathCurveTo piece = cubicBetween(cur, *c, t0, t1, s);
                emitStart(s);
                out.addCurve(piece.point, piece.control1, piece.control2);
            });
            cur = c->point;
        } else if (auto* arc = std::get_if<PathArc>(&e)) {
            double len = arc->radius * std::abs(arc->sweep);
            visit(len, [&](double a, double b) {
                double dir = arc->sweep < 0 ? -1 : 1;
                double a0 = arc->startAngle + dir * a / arc->radius;
                double a1 = arc->startAngle + dir * b / arc->radius;
                emitStart(arc->pointAt(a0));
                out.elements_.emplace_back(PathArc{arc->center, arc->radius, a0, a1 - a0});
                out.current_ = arc->pointAt(a1);
            });
            cur = arc->endPoint();
        } else {
            double len = distance(cur, start);
            Point from0 = cur;
            visit(len, [&](double a, double b) {
                emitStart(lerp(from0, start, a / len));
                out.lineTo(lerp(from0, start, b / len));
            });
            cur = start;
            penDown = false;
        }
    }
    return out;
}

Path Path::flattenedArcs() const {
    Path out;
    for (const auto& e : elements_) {
        if (auto* a = std::get_if<PathArc>(&e))
            appendArcAsCurves(out.elements_, *a);
        else
            out.elements_.push_back(e);
    }
    out.current_ = current_;
    out.subpathStart_ = subpathStart_;
    return out;
}

Path Path::transformed(const AffineTransform& t) const {
    if (t.isIdentity()) return *this;
    // Arcs survive only transforms that keep circles round.
    const Path source = t.isSimilarity() ? *this : flattenedArcs();
    Path out;
    double scale = std::sqrt(std::abs(t.determinant()));
    double mirror = t.determinant() < 0 ? -1 : 1;
    for (const auto& e : source.elements_) {
        std::visit(
            [&](const auto& el) {
                using T = std::decay_t<decltype(el)>;
                if constexpr (std::is_same_v<T, PathMoveTo>) {
                    out.elements_.emplace_back(PathMoveTo{t.apply(el.point)});
                } else if constexpr (std::is_same_v<T, PathLineTo>) {
                    out.elements_.emplace_back(PathLineTo{t.apply(el.point)});
                } else if constexpr (std::is_same_v<T, PathCurveTo>) {
                    out.elements_.emplace_back(
                        PathCurveTo{t.apply(el.control1), t.apply(el.control2), t.apply(el.point)});
                } else if constexpr (std::is_same_v<T, PathArc>) {
                    double dx = std::cos(el.startAngle), dy = std::sin(el.startAngle);
                    double start = std::atan2(t.b * dx + t.d * dy, t.a * dx + t.c * dy);
                    out.elements_.emplace_back(PathArc{t.apply(el.center), el.radius * scale, start, el.sweep * mirror});
                } else {
                    out.elements_.emplace_back(el);
                }
            },
            e);
    }
    if (current_) out.current_ = t.apply(*current_);
    if (subpathStart_) out.subpathStart_ = t.apply(*subpathStart_);
    return out;
}

namespace {

// Caps at one end of a stroke: `p` is the end point on the centre line,
// `outward` the angle pointing from p to the side where the outline arrives,
// `forward` the unit direction in which the stroke leaves the figure there.
// The cap runs clockwise from the arriving side to the opposite side.
void appendCap(Path& out, Point p, double h, double arrivingAngle, Point forward, LineCap cap) {
    Point arriving = polar(p, h, arrivingAngle);
    Point leaving = polar(p, h, arrivingAngle + std::numbers::pi);
    switch (cap) {
        case LineCap::butt: out.lineTo(leaving); break;
        case LineCap::round:
            out.addArc(p, h, Angle{arrivingAngle}, Angle{arrivingAngle + std::numbers::pi}, true);
            break;
        case LineCap::square:
            out.lineTo({arriving.x + h * forward.x, arriving.y + h * forward.y});
            out.lineTo({leaving.x + h * forward.x, leaving.y + h * forward.y});
            out.lineTo(leaving);
            break;
    }
}

void appendDot(Path& out, Point p, double h, LineCap cap) {
    if (cap == LineCap::round) out.addEllipse({{p.x - h, p.y - h}, {2 * h, 2 * h}});
    if (cap == LineCap::square) out.addRect({{p.x - h, p.y - h}, {2 * h, 2 * h}});
}

void appendArcOutline(Path& out, PathArc arc, double h, LineCap cap) {
    if (arc.sweep < 0) arc = PathArc{arc.center, arc.radius, arc.startAngle + arc.sweep, -arc.sweep};
    double a0 = arc.startAngle, a1 = a0 + arc.sweep;
    double ro = arc.radius + h, ri = std::max(0.0, arc.radius - h);
    if (arc.sweep >= kTwoPi - 1e-9) {
        // A whole turn: a ring, the inner circle wound the other way.
        out.moveTo(polar(arc.center, ro, 0));
        out.addArc(arc.center, ro, Angle{0}, Angle{kTwoPi}, true).closeSubpath();
        if (ri > 0) {
            out.moveTo(polar(arc.center, ri, 0));
            out.addArc(arc.center, ri, Angle{0}, Angle{-kTwoPi}, false).closeSubpath();
        }
        return;
    }
    if (arc.sweep <= 0) {
        appendDot(out, arc.pointAt(a0), h, cap);
        return;
    }
    out.moveTo(polar(arc.center, ro, a0));
    out.addArc(arc.center, ro, Angle{a0}, Angle{a1}, true);
    appendCap(out, arc.pointAt(a1), h, a1, {-std::sin(a1), std::cos(a1)}, cap);
    if (ri > 0)
        out.addArc(arc.center, ri, Angle{a1}, Angle{a0}, false);
    else
        out.lineTo(arc.center);
    appendCap(out, arc.pointAt(a0), h, a0 + std::numbers::pi, {std::sin(a0), -std::cos(a0)}, cap);
    out.closeSubpath();
}

void appendLineOutline(Path& out, Point p0, Point p1, double h, LineCap cap) {
    double len = distance(p0, p1);
    if (len <= 1e-12) {
        appendDot(out, p0, h, cap);
        return;
    }
    Point u{(p1.x - p0.x) / len, (p1.y - p0.y) / len};
    Point n{-u.y, u.x};  // a quarter turn clockwise on the screen
    double nAngle = std::atan2(n.y, n.x);
    out.moveTo({p0.x - h * n.x, p0.y - h * n.y});
    out.lineTo({p1.x - h * n.x, p1.y - h * n.y});
    appendCap(out, p1, h, nAngle + std::numbers::pi, u, cap);
    out.lineTo({p0.x + h * n.x, p0.y + h * n.y});
    appendCap(out, p0, h, nAngle, {-u.x, -u.y}, cap);
    out.closeSubpath();
}

}  // namespace

std::optional<Path> Path::strokeOutline(const StrokeStyle& style) const {
    if (!style.dash.empty()) return std::nullopt;
    double h = std::max(0.0, style.lineWidth) / 2;
    Path out;
    std::size_t i = 0;
    const auto& els = elements_;
    while (i < els.size()) {
        auto* move = std::get_if<PathMoveTo>(&els[i]);
        if (!move) return std::nullopt;
        ++i;
        if (i >= els.size() || std::holds_alternative<PathMoveTo>(els[i])) continue;  // a lone point
        bool closed = i + 1 < els.size() && std::holds_alternative<PathClose>(els[i + 1]);
        if (auto* arc = std::get_if<PathArc>(&els[i])) {
            if (closed && std::abs(arc->sweep) < kTwoPi - 1e-9) return std::nullopt;
            appendArcOutline(out, *arc, h, style.lineCap);
        } else if (auto* line = std::get_if<PathLineTo>(&els[i])) {
            if (closed) return std::nullopt;
            appendLineOutline(out, move->point, line->point, h, style.lineCap);
        } else {
            return std::nullopt;
        }
        i += closed ? 2 : 1;
    }
    return out;
}

}  // namespace qrv::platform
