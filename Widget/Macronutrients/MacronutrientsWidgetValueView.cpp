#include "Widget/Macronutrients/MacronutrientsWidgetValueView.hpp"

#include <algorithm>

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Calories/AnimatedCircularProgressView.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"

namespace qrv::widget {

using namespace qrv::platform;
using catalog::QRVColor;
using catalog::QRVFont;

namespace {

// The nutrient's name above the ring.
View nameText(std::string title) {
    return Text(std::move(title))
        .font(catalog::font(QRVFont::label14Medium, false))
        .foregroundColor(QRVColor::neutralsPrimary())
        .lineLimit(1)
        .minimumScaleFactor(0.7);
}

// Name, ring and the line under it, stacked and centred in the whole height.
View column(View name, View ring, View below, Size size) {
    // Never wider than the column: three rings side by side in a narrow widget
    // must not overlap.
    const double side = size.height * MacronutrientsWidgetValueView::kRingHeightRatio;
    return VStack(
               {std::move(name), std::move(ring).frame(std::min(side, size.width), side), std::move(below)},
               HorizontalAlignment::center, MacronutrientsWidgetValueView::kSpacing)
        .frame(size.width, size.height);
}

}  // namespace

View MacronutrientsWidgetValueView::placeholder(std::string title) {
    return GeometryReader([title](Size size) -> View {
        const double trackWidth = size.height * kTrackWidthRatio;
        View ring = ZStack({Circle().stroke(QRVColor::neutralsBackground(), trackWidth),
                            Text(localizedString("--"))
                                .font(catalog::font(QRVFont::headline18Semibold, false))
                                .foregroundColor(QRVColor::neutralsSecondary())});
        return column(nameText(title), ring, EmptyView(), size);
    });
}

View MacronutrientsWidgetValueView::body() const {
    const MacronutrientsWidgetValueViewModel model = viewModel;
    return GeometryReader([model](Size size) -> View {
        const double trackWidth = size.height * kTrackWidthRatio;
        View ring = AnimatedCircularProgressView{model.ringConfiguration(trackWidth), model.valueText(),
                                                 model.goalText(), model.progress(), model.reverseProgress()};
        View leftOver = Text(model.leftOverText())
                            .font(model.leftOverFont())
                            .foregroundColor(model.leftOverColor())
                            .lineLimit(1)
                            .minimumScaleFactor(0.6);
        return column(nameText(model.data.title), ring, leftOver, size);
    });
}

}  // namespace qrv::widget
