#pragma once
// The catalog's 63 label themes: each pairs a type style with a palette text
// colour. Label themes never grow on the tablet. Case names read
// <style><colour>; a numeric suffix tells apart themes that share both.
#include <array>
#include <optional>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"

namespace qrv::catalog {

enum class QRVLabelTheme : int {
    display48BoldPrimary = 0,
    title34BoldPrimary = 1,
    title34BoldPrimary2 = 2,
    title24BoldPrimary = 3,
    title24BoldPrimary2 = 4,
    title24BoldPrimary3 = 5,
    title20BoldPrimary = 6,
    title20BoldPrimary2 = 7,
    headline18SemiboldPrimary = 8,
    headline18SemiboldSecondary = 9,
    headline18SemiboldBrand = 10,
    headline18SemiboldTertiary = 11,
    headline16MediumPrimary = 12,
    headline16MediumInverse = 13,
    subhead14MediumPrimary = 14,
    subhead14MediumInverse = 15,
    subhead14MediumBrand = 16,
    subhead14MediumBrandText = 17,
    subhead14MediumSecondary = 18,
    subhead14MediumTertiary = 19,
    body16RegularPrimary = 20,
    body16RegularSecondary = 21,
    body16RegularSecondary2 = 22,
    body16RegularTertiary = 23,
    body16RegularBrand = 24,
    body14RegularPrimary = 25,
    subhead14BoldSecondary = 26,
    body14RegularSecondary = 27,
    body14RegularTertiary = 28,
    body14RegularBrand = 29,
    headline16MediumPrimary2 = 30,
    headline16MediumBrand = 31,
    headline16MediumNegative = 32,
    headline16MediumBrand2 = 33,
    headline16MediumBrandText = 34,
    button16BoldPrimary = 35,
    button16BoldSecondary = 36,
    button16BoldTertiary = 37,
    button16BoldBrand = 38,
    button16BoldBrandText = 39,
    button16BoldInverse = 40,
    button14MediumPrimary = 41,
    button14MediumSecondary = 42,
    button14MediumTertiary = 43,
    button14MediumBrand = 44,
    button14MediumInverse = 45,
    label12MediumPrimary = 46,
    label12MediumSecondary = 47,
    label12MediumInverse = 48,
    label12MediumPositive = 49,
    label12MediumCarb = 50,
    label12MediumFat = 51,
    label12MediumProtein = 52,
    label12MediumNegative = 53,
    footnote12RegularPrimary = 54,
    footnote12RegularSecondary = 55,
    footnote12RegularTertiary = 56,
    footnote12RegularBrand = 57,
    footnote12RegularQuaternary = 58,
    footnote12RegularBrandText = 59,
    label12MediumPrimary2 = 60,
    label12MediumSecondary2 = 61,
    label12MediumTertiary = 62,
};

// Every theme in raw-value order.
extern const std::array<QRVLabelTheme, 63> kAllQRVLabelThemes;

// Nothing outside 0-62.
std::optional<QRVLabelTheme> qrvLabelThemeFromRawValue(int rawValue);
constexpr int rawValue(QRVLabelTheme theme) { return static_cast<int>(theme); }

// The theme's type style. A value outside the enumeration stops the program
// (as do the two below).
QRVFont themeStyle(QRVLabelTheme theme);
// The style's font, never enlarged on the tablet.
platform::Font themeFont(QRVLabelTheme theme);
// The palette token of the theme's text colour.
const platform::Color& themeTextColor(QRVLabelTheme theme);

}  // namespace qrv::catalog
