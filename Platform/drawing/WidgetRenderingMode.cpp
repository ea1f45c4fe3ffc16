#include "Platform/drawing/WidgetRenderingMode.hpp"
#include "Platform/drawing/Overloaded.hpp"

#include <algorithm>
#include <cctype>

namespace qrv::platform {
namespace {

Rgba mix(Rgba a, Rgba b, double t) {
    return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t, a.blue + (b.blue - a.blue) * t,
            1};
}
double luminance(const Rgba& c) { return 0.2126 * c.red + 0.7152 * c.green + 0.0722 * c.blue; }

// `to`'s colour with `from`'s alpha, per colour-scheme variant.
Color keepingAlpha(const Color& from, const Color& to) {
    Color c = to;
    c.light.alpha *= from.light.alpha;
    c.dark.alpha *= from.dark.alpha;
    return c;
}

// The colours of the accented mode. The platform does not publish its
// shades; these are chosen so a tinted widget reads like its neighbours: in
// the dark, near-white content and a deep tinted glass; in the light, deep
// tinted content on a pale wash. The accent group shows the tint itself in
// both.
struct AccentedPalette {
    Color accent, standard, material;
    explicit AccentedPalette(Rgba tint)
        : accent{tint, tint, "accent-tint"},
          standard{mix(tint, {0, 0, 0, 1}, 0.72), mix(tint, {1, 1, 1, 1}, 0.88), "default-tint"},
          material{mix(tint, {1, 1, 1, 1}, 0.84), mix(tint, {0, 0, 0, 1}, 0.80), "tinted-material"} {}
    const Color& of(WidgetGroup g) const {
        return g == WidgetGroup::accent                ? accent
               : g == WidgetGroup::containerBackground ? material
                                                       : standard;
    }
};

// Vibrant: what shows is the material lit by the content, so a colour's
// luminance becomes the strength (alpha) of one light colour. Dark greys
// still show faintly rather than vanish, as secondary content should
// (the curve is not published: a quarter at black, full at white).
Color vibrant(const Color& c, const Rgba& light) {
    auto one = [&](const Rgba& v) {
        Rgba out = light;
        out.alpha = v.alpha * (0.25 + 0.75 * std::clamp(luminance(v), 0.0, 1.0));
        return out;
    };
    return Color{one(c.light), one(c.dark), "vibrant"};
}

}  // namespace

DisplayList applyRenderingMode(DisplayList list, const RenderingModeStyle& style) {
    if (style.mode == WidgetRenderingMode::fullColor) return list;
    const AccentedPalette palette(style.tint);
    // StandBy's low-light red: dim enough not to light up a dark bedroom.
    const Rgba light = style.lowLight ? Rgba{1.0, 0.18, 0.14, 1} : Rgba{1, 1, 1, 1};
    const Color lightColor{light, light, "vibrant"};
    std::vector<WidgetGroup> groups{WidgetGroup::default_};
    auto recolor = [&](const Color& c) {
        if (style.mode == WidgetRenderingMode::vibrant) return vibrant(c, light);
        return keepingAlpha(c, palette.of(groups.back()));
    };
    for (auto& o : list.ops) {
        std::visit(Overloaded{
                       [&](op::BeginWidgetGroup& g) {
                           // A default group inside a container background stays background.
                           groups.push_back(g.group == WidgetGroup::default_ &&
                                                    groups.back() == WidgetGroup::containerBackground
                                                ? groups.back()
                                                : g.group);
                       },
                       [&](op::EndWidgetGroup&) {
                           if (groups.size() > 1) groups.pop_back();
                       },
                       [&](op::FillPath& f) { f.color = recolor(f.color); },
                       [&](op::StrokePath& s) { s.color = recolor(s.color); },
                       [&](op::DrawText& t) { t.color = recolor(t.color); },
                       [&](op::DrawImage& i) {
                           if (i.tint) return void(i.tint = recolor(*i.tint));
                           if (style.mode == WidgetRenderingMode::vibrant) {
                               i.tint = lightColor;
                               i.luminance = true;
                               return;
                           }
                           // An image in the accent group is accented whatever it asked for.
                           auto mode = groups.back() == WidgetGroup::accent
                                           ? WidgetAccentedRenderingMode::accented
                                           : i.accentedMode;
                           switch (mode) {
                               case WidgetAccentedRenderingMode::fullColor:
                                   return;
                               case WidgetAccentedRenderingMode::desaturated:
                                   i.tint = palette.of(groups.back());
                                   i.luminance = true;
                                   return;
                               case WidgetAccentedRenderingMode::accentedDesaturated:
                                   i.tint = palette.accent;
                                   i.luminance = true;
                                   return;
                               case WidgetAccentedRenderingMode::accented:
                                   i.tint = palette.accent;
                                   return;
                           }
                       },
                       [&](auto&) {},
                   },
                   o);
    }
    return list;
}

std::optional<Rgba> parseHexColor(std::string_view text) {
    if (!text.empty() && text.front() == '#') text.remove_prefix(1);
    if (text.size() != 6 ||
        !std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c); }))
        return std::nullopt;
    auto byte = [&](std::size_t at) {
        return std::stoi(std::string(text.substr(at, 2)), nullptr, 16) / 255.0;
    };
    return Rgba{byte(0), byte(2), byte(4), 1};
}

}  // namespace qrv::platform
