#include "QRVUICatalog/Fonts/QRVLabelTheme.hpp"

#include <string>

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fatal.hpp"

namespace qrv::catalog {
namespace {

struct Theme {
    QRVFont style;
    const platform::Color& (*color)();  // the palette token, resolved on use
};

// By raw value.
const std::array<Theme, 63> kThemes{{
    {QRVFont::display48Bold, &QRVColor::neutralsPrimary},         // 0 display48BoldPrimary
    {QRVFont::title34Bold, &QRVColor::neutralsPrimary},           // 1 title34BoldPrimary
    {QRVFont::title34Bold, &QRVColor::neutralsPrimary},           // 2 title34BoldPrimary2
    {QRVFont::title24Bold, &QRVColor::neutralsPrimary},           // 3 title24BoldPrimary
    {QRVFont::title24Bold, &QRVColor::neutralsPrimary},           // 4 title24BoldPrimary2
    {QRVFont::title24Bold, &QRVColor::neutralsPrimary},           // 5 title24BoldPrimary3
    {QRVFont::title20Bold, &QRVColor::neutralsPrimary},           // 6 title20BoldPrimary
    {QRVFont::title20Bold, &QRVColor::neutralsPrimary},           // 7 title20BoldPrimary2
    {QRVFont::headline18Semibold, &QRVColor::neutralsPrimary},    // 8 headline18SemiboldPrimary
    {QRVFont::headline18Semibold, &QRVColor::neutralsSecondary},  // 9 headline18SemiboldSecondary
    {QRVFont::headline18Semibold, &QRVColor::brandPrimary},       // 10 headline18SemiboldBrand
    {QRVFont::headline18Semibold, &QRVColor::neutralsTertiary},   // 11 headline18SemiboldTertiary
    {QRVFont::headline16Medium, &QRVColor::neutralsPrimary},      // 12 headline16MediumPrimary
    {QRVFont::headline16Medium, &QRVColor::neutralsInverse},      // 13 headline16MediumInverse
    {QRVFont::subhead14Medium, &QRVColor::neutralsPrimary},       // 14 subhead14MediumPrimary
    {QRVFont::subhead14Medium, &QRVColor::neutralsInverse},       // 15 subhead14MediumInverse
    {QRVFont::subhead14Medium, &QRVColor::brandPrimary},          // 16 subhead14MediumBrand
    {QRVFont::subhead14Medium, &QRVColor::brandPrimaryTxt},       // 17 subhead14MediumBrandText
    {QRVFont::subhead14Medium, &QRVColor::neutralsSecondary},     // 18 subhead14MediumSecondary
    {QRVFont::subhead14Medium, &QRVColor::neutralsTertiary},      // 19 subhead14MediumTertiary
    {QRVFont::body16Regular, &QRVColor::neutralsPrimary},         // 20 body16RegularPrimary
    {QRVFont::body16Regular, &QRVColor::neutralsSecondary},       // 21 body16RegularSecondary
    {QRVFont::body16Regular, &QRVColor::neutralsSecondary},       // 22 body16RegularSecondary2
    {QRVFont::body16Regular, &QRVColor::neutralsTertiary},        // 23 body16RegularTertiary
    {QRVFont::body16Regular, &QRVColor::brandPrimary},            // 24 body16RegularBrand
    {QRVFont::body14Regular, &QRVColor::neutralsPrimary},         // 25 body14RegularPrimary
    {QRVFont::subhead14Bold, &QRVColor::neutralsSecondary},       // 26 subhead14BoldSecondary
    {QRVFont::body14Regular, &QRVColor::neutralsSecondary},       // 27 body14RegularSecondary
    {QRVFont::body14Regular, &QRVColor::neutralsTertiary},        // 28 body14RegularTertiary
    {QRVFont::body14Regular, &QRVColor::brandPrimary},            // 29 body14RegularBrand
    {QRVFont::headline16Medium, &QRVColor::neutralsPrimary},      // 30 headline16MediumPrimary2
    {QRVFont::headline16Medium, &QRVColor::brandPrimary},         // 31 headline16MediumBrand
    {QRVFont::headline16Medium, &QRVColor::negative},             // 32 headline16MediumNegative
    {QRVFont::headline16Medium, &QRVColor::brandPrimary},         // 33 headline16MediumBrand2
    {QRVFont::headline16Medium, &QRVColor::brandPrimaryTxt},      // 34 headline16MediumBrandText
    {QRVFont::button16Bold, &QRVColor::neutralsPrimary},          // 35 button16BoldPrimary
    {QRVFont::button16Bold, &QRVColor::neutralsSecondary},        // 36 button16BoldSecondary
    {QRVFont::button16Bold, &QRVColor::neutralsTertiary},         // 37 button16BoldTertiary
    {QRVFont::button16Bold, &QRVColor::brandPrimary},             // 38 button16BoldBrand
    {QRVFont::button16Bold, &QRVColor::brandPrimaryTxt},          // 39 button16BoldBrandText
    {QRVFont::button16Bold, &QRVColor::neutralsInverse},          // 40 button16BoldInverse
    {QRVFont::button14Medium, &QRVColor::neutralsPrimary},        // 41 button14MediumPrimary
    {QRVFont::button14Medium, &QRVColor::neutralsSecondary},      // 42 button14MediumSecondary
    {QRVFont::button14Medium, &QRVColor::neutralsTertiary},       // 43 button14MediumTertiary
    {QRVFont::button14Medium, &QRVColor::brandPrimary},           // 44 button14MediumBrand
    {QRVFont::button14Medium, &QRVColor::neutralsInverse},        // 45 button14MediumInverse
    {QRVFont::label12Medium, &QRVColor::neutralsPrimary},         // 46 label12MediumPrimary
    {QRVFont::label12Medium, &QRVColor::neutralsSecondary},       // 47 label12MediumSecondary
    {QRVFont::label12Medium, &QRVColor::neutralsInverse},         // 48 label12MediumInverse
    {QRVFont::label12Medium, &QRVColor::positive},                // 49 label12MediumPositive
    {QRVFont::label12Medium, &QRVColor::carbTxt},                 // 50 label12MediumCarb
    {QRVFont::label12Medium, &QRVColor::fatTxt},                  // 51 label12MediumFat
    {QRVFont::label12Medium, &QRVColor::proteinTxt},              // 52 label12MediumProtein
    {QRVFont::label12Medium, &QRVColor::negative},                // 53 label12MediumNegative
    {QRVFont::footnote12Regular, &QRVColor::neutralsPrimary},     // 54 footnote12RegularPrimary
    {QRVFont::footnote12Regular, &QRVColor::neutralsSecondary},   // 55 footnote12RegularSecondary
    {QRVFont::footnote12Regular, &QRVColor::neutralsTertiary},    // 56 footnote12RegularTertiary
    {QRVFont::footnote12Regular, &QRVColor::brandPrimary},        // 57 footnote12RegularBrand
    {QRVFont::footnote12Regular, &QRVColor::neutralsQuaternary},  // 58 footnote12RegularQuaternary
    {QRVFont::footnote12Regular, &QRVColor::brandPrimaryTxt},     // 59 footnote12RegularBrandText
    {QRVFont::label12Medium, &QRVColor::neutralsPrimary},         // 60 label12MediumPrimary2
    {QRVFont::label12Medium, &QRVColor::neutralsSecondary},       // 61 label12MediumSecondary2
    {QRVFont::label12Medium, &QRVColor::neutralsTertiary},        // 62 label12MediumTertiary
}};

const Theme& themeOf(QRVLabelTheme theme) {
    const int raw = rawValue(theme);
    if (raw < 0 || raw >= static_cast<int>(kThemes.size())) {
        fatalError("unexpected QRVLabelTheme raw value " + std::to_string(raw));
    }
    return kThemes[static_cast<std::size_t>(raw)];
}

}  // namespace

const std::array<QRVLabelTheme, 63> kAllQRVLabelThemes = [] {
    std::array<QRVLabelTheme, 63> all{};
    for (int i = 0; i < 63; ++i) all[static_cast<std::size_t>(i)] = static_cast<QRVLabelTheme>(i);
    return all;
}();

std::optional<QRVLabelTheme> qrvLabelThemeFromRawValue(int raw) {
    if (raw < 0 || raw >= static_cast<int>(kThemes.size())) return std::nullopt;
    return static_cast<QRVLabelTheme>(raw);
}

QRVFont themeStyle(QRVLabelTheme theme) { return themeOf(theme).style; }

platform::Font themeFont(QRVLabelTheme theme) { return font(themeOf(theme).style, false); }

const platform::Color& themeTextColor(QRVLabelTheme theme) { return themeOf(theme).color(); }

}  // namespace qrv::catalog
