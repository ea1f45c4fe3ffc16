#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/Overloaded.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace qrv::platform {
namespace {

std::string num(double v) {
    if (std::isinf(v)) return v > 0 ? "inf" : "-inf";
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.2f", v);
    std::string s = buf;
    return s == "-0.00" ? "0.00" : s;
}

std::string degrees(double radians) { return num(radians * 180 / std::numbers::pi) + "deg"; }
std::string point(Point p) { return num(p.x) + " " + num(p.y); }
std::string rect(const Rect& r) {
    return "(" + num(r.minX()) + ", " + num(r.minY()) + ", " + num(r.width()) + ", " + num(r.height()) + ")";
}

std::string hex(const Rgba& c) {
    auto byte = [](double v) { return static_cast<unsigned>(std::lround(std::clamp(v, 0.0, 1.0) * 255)); };
    char buf[16];
    std::snprintf(buf, sizeof buf, "#%02X%02X%02X%02X", byte(c.red), byte(c.green), byte(c.blue), byte(c.alpha));
    return buf;
}

std::string color(const Color& c) {
    std::string s = hex(c.light);
    if (hex(c.dark) != s) s += "/" + hex(c.dark);
    if (!c.name.empty()) s += " (" + c.name + ")";
    return s;
}

std::string quoted(const std::string& s) {
    std::string out = "\"";
    for (char ch : s) {
        if (ch == '"' || ch == '\\') out += '\\';
        if (ch == '\n') {
            out += "\\n";
            continue;
        }
        out += ch;
    }
    return out + "\"";
}

std::string path(const Path& p) {
    std::string s;
    for (const auto& e : p.elements()) {
        if (!s.empty()) s += ' ';
        s += std::visit(Overloaded{
                            [](const PathMoveTo& m) { return "M " + point(m.point); },
                            [](const PathLineTo& l) { return "L " + point(l.point); },
                            [](const PathCurveTo& c) {
                                return "C " + point(c.control1) + " " + point(c.control2) + " " + point(c.point);
                            },
                            [](const PathArc& a) {
                                return "A " + point(a.center) + " r=" + num(a.radius) + " " + degrees(a.startAngle) +
                                       " sweep " + degrees(a.sweep);
                            },
                            [](const PathClose&) { return std::string("Z"); },
                        },
                        e);
    }
    return "[" + s + "]";
}

const char* weightName(FontWeight w) {
    static const char* names[] = {"ultraLight", "thin", "light", "regular", "medium", "semibold", "bold", "heavy", "black"};
    return names[static_cast<int>(w)];
}

const char* accentedModeName(WidgetAccentedRenderingMode m) {
    static const char* names[] = {"fullColor", "desaturated", "accentedDesaturated", "accented"};
    return names[static_cast<int>(m)];
}
const char* groupName(WidgetGroup g) {
    static const char* names[] = {"default", "accent", "container-background"};
    return names[static_cast<int>(g)];
}

std::string font(const Font& f) { return f.family + " " + num(f.size) + " " + weightName(f.weight); }

std::string stroke(const StrokeStyle& s) {
    static const char* caps[] = {"butt", "round", "square"};
    static const char* joins[] = {"miter", "round", "bevel"};
    std::string out = "width=" + num(s.lineWidth) + " cap=" + caps[static_cast<int>(s.lineCap)] +
                      " join=" + joins[static_cast<int>(s.lineJoin)] + " miter=" + num(s.miterLimit);
    if (!s.dash.empty()) {
        out += " dash=[";
        for (std::size_t i = 0; i < s.dash.size(); ++i) out += (i ? " " : "") + num(s.dash[i]);
        out += "] phase=" + num(s.dashPhase);
    }
    return out;
}

std::string target(const std::variant<LinkTarget, IntentInvocation>& t) {
    return std::visit(Overloaded{
                          [](const LinkTarget& l) { return "link " + quoted(l.url); },
                          [](const IntentInvocation& i) {
                              std::string s = "intent " + i.intent + "(";
                              for (std::size_t k = 0; k < i.parameters.size(); ++k)
                                  s += (k ? ", " : "") + quoted(i.parameters[k]);
                              return s + ")";
                          },
                      },
                      t);
}

}  // namespace

std::optional<std::variant<LinkTarget, IntentInvocation>> DisplayList::targetAt(Point p) const {
    for (auto it = hitRegions.rbegin(); it != hitRegions.rend(); ++it)
        if (it->rect.contains(p)) return it->target;
    if (widgetURL) return LinkTarget{*widgetURL};
    return std::nullopt;
}

std::string toText(const DisplayList& list) {
    std::string out = "size " + num(list.size.width) + " x " + num(list.size.height) + "\n";
    int depth = 0;
    auto line = [&](const std::string& s) { out += std::string(static_cast<std::size_t>(std::max(depth, 0)) * 2, ' ') + s + "\n"; };
    for (const auto& o : list.ops) {
        std::visit(Overloaded{
                       [&](const op::Save&) { line("save"), ++depth; },
                       [&](const op::Restore&) { --depth, line("restore"); },
                       [&](const op::Translate& t) { line("translate " + num(t.dx) + " " + num(t.dy)); },
                       [&](const op::Rotate& r) { line("rotate " + degrees(r.radians)); },
                       [&](const op::Scale& s) { line("scale " + num(s.sx) + " " + num(s.sy)); },
                       [&](const op::ClipPath& c) {
                           line(std::string("clip ") + (c.rule == FillRule::evenOdd ? "evenOdd " : "") + path(c.path));
                       },
                       [&](const op::PushGroup&) { line("push-group"), ++depth; },
                       [&](const op::PushMask&) { --depth, line("push-mask"), ++depth; },
                       [&](const op::PopMask&) { --depth, line("pop-mask"); },
                       [&](const op::PopGroup& g) { --depth, line("pop-group opacity=" + num(g.opacity)); },
                       [&](const op::FillPath& f) {
                           line("fill " + color(f.color) + (f.rule == FillRule::evenOdd ? " evenOdd " : " ") + path(f.path));
                       },
                       [&](const op::StrokePath& s) {
                           line("stroke " + color(s.color) + " " + stroke(s.style) + " " + path(s.path));
                       },
                       [&](const op::DrawText& t) {
                           line("text " + quoted(t.text) + " font=" + font(t.font) + " color=" + color(t.color) +
                                " origin=" + point(t.origin) + " baseline=" + num(t.baseline) + " width=" + num(t.width) +
                                (t.direction == LayoutDirection::rightToLeft ? " rtl" : ""));
                       },
                       [&](const op::DrawImage& i) {
                           line("image " + quoted(i.name) + " rect=" + rect(i.rect) +
                                (i.tint ? " tint=" + color(*i.tint) : std::string()) +
                                (i.luminance ? " luminance" : "") +
                                (i.accentedMode != WidgetAccentedRenderingMode::desaturated
                                     ? std::string(" accented-mode=") + accentedModeName(i.accentedMode)
                                     : std::string()));
                       },
                       [&](const op::BeginWidgetGroup& g) {
                           line(std::string("group ") + groupName(g.group)), ++depth;
                       },
                       [&](const op::EndWidgetGroup&) { --depth, line("end-group"); },
                   },
                   o);
    }
    if (!list.hitRegions.empty()) {
        out += "hit regions:\n";
        for (const auto& h : list.hitRegions) out += "  " + rect(h.rect) + " " + target(h.target) + "\n";
    }
    if (list.widgetURL) out += "widget URL: " + quoted(*list.widgetURL) + "\n";
    if (!list.texts.empty()) {
        out += "texts:\n";
        for (const auto& t : list.texts) {
            out += "  " + quoted(t.text) + " " + rect(t.rect) + " size=" + num(t.fontSize);
            if (t.shown != t.text) out += " shown=" + quoted(t.shown);
            if (!t.accessibilityIdentifier.empty()) out += " id=" + t.accessibilityIdentifier;
            out += "\n";
        }
    }
    if (!list.accessibility.empty()) {
        out += "accessibility:\n";
        for (const auto& a : list.accessibility)
            out += "  " + a.identifier + " " + rect(a.rect) + " label=" + quoted(a.label) + "\n";
    }
    return out;
}

}  // namespace qrv::platform
