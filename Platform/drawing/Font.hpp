#pragma once
// A font as the drawing layer needs it: family, point size and weight. The
// painter maps it to Pango; the test measurer uses only the size.
#include <string>

namespace qrv::platform {

enum class FontWeight { ultraLight, thin, light, regular, medium, semibold, bold, heavy, black };

struct Font {
    // The system font. Inter stands in for the phone's own.
    static constexpr const char* kSystemFamily = "Inter";
    // Inter has no Arabic or Hebrew letters, which the phone's system font
    // has; the painter asks for these after any family, so right-to-left
    // texts get a sans of the same kind rather than whatever the font
    // configuration falls back to.
    static constexpr const char* kFallbackFamilies = "Noto Sans Arabic,Noto Sans Hebrew";

    std::string family = kSystemFamily;
    double size = 17;
    FontWeight weight = FontWeight::regular;

    static Font system(double size, FontWeight weight = FontWeight::regular) {
        return Font{kSystemFamily, size, weight};
    }
    friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace qrv::platform
