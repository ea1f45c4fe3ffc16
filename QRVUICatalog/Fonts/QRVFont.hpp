#pragma once
// The catalog's type scale: 26 styles on the system font, identified by their
// raw values 0-25. Several styles share a size and weight on purpose (0, 12
// and 23 are all 14 pt medium); they stay distinct styles.
#include <array>
#include <optional>

#include "Platform/drawing/Font.hpp"

namespace qrv::catalog {

enum class QRVFont : int {
    label14Medium = 0,
    label12Medium = 1,
    label12Regular = 2,
    display72Bold = 3,
    display48Bold = 4,
    title34Bold = 5,
    title28Bold = 6,
    title24Bold = 7,
    title20Bold = 8,
    headline18Semibold = 9,
    headline16Medium = 10,
    subhead14Bold = 11,
    subhead14Medium = 12,
    caption12Medium = 13,
    body16Regular = 14,
    body16Bold = 15,
    body14Regular = 16,
    body14Bold = 17,
    footnote12Regular = 18,
    footnote12Bold = 19,
    button16Regular = 20,
    button16Bold = 21,
    button14Bold = 22,
    button14Medium = 23,
    micro10Regular = 24,
    micro10Bold = 25,
};

// Every style in raw-value order.
extern const std::array<QRVFont, 26> kAllQRVFonts;

// Nothing outside 0-25.
std::optional<QRVFont> qrvFontFromRawValue(int rawValue);
constexpr int rawValue(QRVFont font) { return static_cast<int>(font); }

// Points added to a style's size on the tablet when the caller asks for it.
inline constexpr double kIpadEnlargement = 2.0;

// The style's size and weight as tabled (never enlarged). A value outside the
// enumeration stops the program.
double pointSize(QRVFont font);
platform::FontWeight fontWeight(QRVFont font);

// The system font of the style; with largerForIpad on a tablet, 2 pt larger.
platform::Font font(QRVFont font, bool largerForIpad);

// A font together with the line height (points) that goes with it.
struct FontWithLineHeight {
    bool largerForIpad = false;
    platform::Font font;
    double lineHeight = 0;
    friend bool operator==(const FontWithLineHeight&, const FontWithLineHeight&) = default;
};
FontWithLineHeight fontWithLineHeight(QRVFont font, bool largerForIpad);

// The catalog's line height for a point size: 1.4 times the size for text
// below 24 pt, 1.2 times from 24 pt up (titles and display sizes), rounded up
// to an even number of points.
double lineHeightForPointSize(double size);

}  // namespace qrv::catalog
