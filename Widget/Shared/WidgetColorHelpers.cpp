#include "Widget/Shared/WidgetColorHelpers.hpp"

#include "QRVUICatalog/Colors/QRVColor.hpp"

namespace qrv::widget {

using catalog::QRVColor;

MacronutrientColors WidgetColorHelpers::macronutrientColors(int typeRawValue) {
    switch (typeRawValue) {
        case 0:
            return {QRVColor::carb(), QRVColor::carbTxt(), QRVColor::carbBG()};
        case 1:
            return {QRVColor::fat(), QRVColor::fatTxt(), QRVColor::fatBG()};
        default:
            return {QRVColor::protein(), QRVColor::proteinTxt(), QRVColor::proteinBG()};
    }
}

}  // namespace qrv::widget
