#include "Widget/Water/WaterWidgetView.hpp"

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Shared/WidgetLoggedOutView.hpp"
#include "Widget/Water/WaterLevelWidgetView.hpp"
#include "Widget/Water/WaterWidgetViewLogAction.hpp"
#include "Widget/Water/WidgetOverlayButton.hpp"

namespace qrv::widget {

using namespace qrv::platform;
using catalog::QRVColor;
using catalog::QRVFont;

namespace {

constexpr double kIconSize = 20;
constexpr double kGlassPadding = 16;

View filling(View content) {
    return std::move(content).frame(FlexibleFrame{.maxWidth = infinity, .maxHeight = infinity});
}

}  // namespace

std::string WaterWidgetView::deepLink(WidgetFamily family) { return WidgetOverlayButton::deepLink(family); }

Color WaterWidgetView::totalColor(ColorScheme scheme) {
    return scheme == ColorScheme::dark ? QRVColor::neutralsWhite() : QRVColor::neutralsPrimary();
}

bool WaterWidgetView::showsGlass() const {
    return viewModel && viewModel->isLoggedIn() && sizeFamily == WidgetFamily::systemMedium;
}

bool WaterWidgetView::afterLayout(const std::vector<std::pair<std::string, Rect>>& preferences) const {
    if (!showsGlass()) return false;
    return WaterLevelWidgetView{sizeFamily, colorScheme, viewModel->waterLevelViewModel()}.afterLayout(
        preferences);
}

View WaterWidgetView::logButton() const {
    const WaterLogAction action = waterLogAction(viewModel->waterUnit());
    View caption = Text(viewModel->buttonText())
                       .font(catalog::font(QRVFont::button14Bold, false))
                       .lineLimit(1)
                       .minimumScaleFactor(0.7)
                       .frame(FlexibleFrame{.maxWidth = infinity})
                       .widgetAccentable(false);
    // The button and the drop icon carry the brand colour in full colour:
    // they carry the accent on a tinted home screen too. The caption stays in
    // the default group, or it would vanish into the button's own accent.
    return Button(IntentInvocation{action.intentName, action.parameters}, caption)
        .buttonStyle(ButtonStyle::borderedProminent)
        .tint(QRVColor::brandPrimary())
        .widgetAccentable();
}

View WaterWidgetView::panel() const {
    View title = HStack({Image(viewModel->topIconName())
                             .resizable()
                             .tinted(QRVColor::brandPrimary())
                             .frame(kIconSize, kIconSize)
                             .widgetAccentable(),
                         Text(viewModel->topText())
                             .font(catalog::font(QRVFont::headline16Medium, false))
                             .foregroundColor(QRVColor::neutralsPrimary())
                             .lineLimit(1)
                             .minimumScaleFactor(0.7)},
                        VerticalAlignment::center, 6);
    View subtitle = Text(viewModel->subtitle())
                        .font(catalog::font(QRVFont::footnote12Regular, false))
                        .foregroundColor(QRVColor::neutralsSecondary())
                        .lineLimit(1);
    // The day's total is the widget's one big figure: one line, shrinking for
    // long amounts ("3,250 ml") rather than wrapping.
    View total = Text(viewModel->waterRepresentation())
                     .font(catalog::font(QRVFont::title28Bold, false))
                     .foregroundColor(totalColor(colorScheme))
                     .lineLimit(1)
                     .minimumScaleFactor(0.5);
    return filling(VStack({title, subtitle, Spacer(2), total, Spacer(2), logButton()},
                          HorizontalAlignment::center, 4))
        .padding(kPanelPadding)
        .removableBackground(QRVColor::neutralsMidground1(), Edges::all())
        .frame(kPanelWidth, std::nullopt);
}

View WaterWidgetView::body() const {
    if (!viewModel) return EmptyView();
    if (!viewModel->isLoggedIn())
        return WidgetLoggedOutView{.errorText = viewModel->loggedOutMessage(), .sizeFamily = sizeFamily}
            .body()
            .widgetURL(deepLink(sizeFamily));

    View content;
    if (sizeFamily == WidgetFamily::systemMedium) {
        View glass =
            WaterLevelWidgetView{sizeFamily, colorScheme, viewModel->waterLevelViewModel()}.body().padding(
                kGlassPadding);
        content = HStack(
            {panel(), filling(glass).removableBackground(QRVColor::neutralsMidground2(), Edges::all())},
            VerticalAlignment::center, 0);
    } else {
        // The small widget is the panel alone, centred on its own colour.
        content = filling(panel()).removableBackground(QRVColor::neutralsMidground1(), Edges::all());
    }
    return ZStack({WidgetOverlayButton(), filling(content)}).widgetURL(deepLink(sizeFamily));
}

}  // namespace qrv::widget
