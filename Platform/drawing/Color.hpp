#pragma once
// Colours as the drawing layer carries them: every colour holds its light and
// dark variant and is resolved with the colour scheme only when it is drawn.
#include <cstdint>
#include <string>

namespace qrv::platform {

enum class ColorScheme { light, dark };

// One sRGB colour, components in 0...1, straight (not premultiplied) alpha.
struct Rgba {
    double red = 0, green = 0, blue = 0, alpha = 1;
    friend bool operator==(const Rgba&, const Rgba&) = default;
};

struct Color {
    Rgba light;
    Rgba dark;
    // For diagnostics and golden dumps: the palette's asset name, or empty.
    std::string name;

    static Color fixed(Rgba both, std::string name = {}) { return Color{both, both, std::move(name)}; }
    static Color white() { return fixed({1, 1, 1, 1}, "white"); }
    static Color black() { return fixed({0, 0, 0, 1}, "black"); }
    static Color clear() { return fixed({0, 0, 0, 0}, "clear"); }

    Rgba resolved(ColorScheme scheme) const { return scheme == ColorScheme::dark ? dark : light; }
    Color opacity(double factor) const {
        Color c = *this;
        c.light.alpha *= factor;
        c.dark.alpha *= factor;
        return c;
    }
    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace qrv::platform
