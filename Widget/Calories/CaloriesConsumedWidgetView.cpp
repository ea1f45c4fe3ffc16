#include "Widget/Calories/CaloriesConsumedWidgetView.hpp"

#include <algorithm>
#include <cmath>

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Calories/AnimatedCircularProgressView.hpp"
#include "Widget/Calories/WidgetStatView.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"
#include "Widget/Shared/WidgetLoggedOutView.hpp"

namespace qrv::widget {

using namespace qrv::platform;
using catalog::QRVColor;
using catalog::QRVFont;

namespace {

constexpr const char* kLinkPrefix = "qrv://qrv/widgets/";

std::string loginPrompt() { return localizedString("dashb.widget.login.long", "Log in to view data."); }

// Home screen: margins at the sides, the gap between the ring column and the
// rows, and the narrowest the rows may be before they are left out (the small
// widget shows the ring alone).
// The ring keeps this far from the widget's edge, clear of its rounded corners.
constexpr double kOuterInset = 8;
constexpr double kSideMargin = 8;
constexpr double kColumnSpacing = 20;
constexpr double kMinimumStatsWidth = 120;

// A divider in the widget's secondary colour.
View secondaryDivider() { return Divider().overlay(QRVColor::neutralsSecondary()); }

// The food-search button, and the barcode button when the record asks for it,
// on one rounded bar. Each button is a link filling its share of the bar.
View actionButtons(bool showsBarcode, Size size) {
    const double iconSize = std::min(size.height * 0.6, 18.0);
    // The icons are what a person taps: they join the accent group, the bar
    // behind them stays in the default one.
    auto button = [&](const char* link, const char* icon, double width) -> View {
        return Link(link, Image(icon)
                              .resizable()
                              .tinted(QRVColor::neutralsPrimary())
                              .frame(iconSize, iconSize)
                              .widgetAccentable()
                              .frame(width, size.height));
    };
    std::vector<View> buttons;
    if (showsBarcode) {
        const double half = (size.width - 1) / 2;
        buttons.push_back(button(CaloriesConsumedWidgetView::kFoodSearchLink, "Search", half));
        // In a row of its own so that it stands upright, shorter than the bar.
        buttons.push_back(HStack({secondaryDivider()}).frame(std::nullopt, size.height * 0.55));
        buttons.push_back(button(CaloriesConsumedWidgetView::kBarcodeLink, "Barcode", half));
    } else {
        buttons.push_back(button(CaloriesConsumedWidgetView::kFoodSearchLink, "Search", size.width));
    }
    return HStack(std::move(buttons), VerticalAlignment::center, 0)
        .frame(size.width, size.height)
        .background(Capsule().fill(QRVColor::neutralsBackground()));
}

// The three rows in their fixed order, divided.
View statRows(const CaloriesConsumedWidgetViewModel& model) {
    const auto stats = model.stats();
    std::vector<View> rows;
    for (auto type : {CaloriesConsumedWidgetStatType::baseGoal, CaloriesConsumedWidgetStatType::food,
                      CaloriesConsumedWidgetStatType::exercise}) {
        const auto found = stats.find(type);
        if (found == stats.end()) continue;
        if (!rows.empty()) rows.push_back(secondaryDivider());
        rows.push_back(WidgetStatView::from(found->second)
                           .body()
                           .frame(FlexibleFrame{
                               .maxWidth = infinity, .maxHeight = infinity, .alignment = Alignment::center}));
    }
    return VStack(std::move(rows), HorizontalAlignment::center, 0);
}

// Lock-screen texts are drawn light: the lock screen renders them in one
// tint over the wallpaper, so only their brightness counts.
View lockScreenText(std::string text, QRVFont style) {
    return Text(std::move(text)).font(catalog::font(style, false)).foregroundColor(QRVColor::neutralsWhite());
}

}  // namespace

std::string CaloriesConsumedWidgetView::deepLink(WidgetFamily family) {
    switch (family) {
        case WidgetFamily::systemMedium:
            return std::string(kLinkPrefix) + "calories_medium";
        case WidgetFamily::accessoryCircular:
            return std::string(kLinkPrefix) + "calories_tiny_circular";
        case WidgetFamily::accessoryRectangular:
            return std::string(kLinkPrefix) + "calories_rectangular";
        case WidgetFamily::accessoryInline:
            return std::string(kLinkPrefix) + "calories_inline";
        case WidgetFamily::systemSmall:
        case WidgetFamily::systemLarge:
        case WidgetFamily::systemExtraLarge:
            break;
    }
    return std::string(kLinkPrefix) + "calories_small";
}

double CaloriesConsumedWidgetView::gaugeArcFraction(double progress) {
    if (progress < 1) return progress * kGaugeArcLength;
    return kGaugeArcLength;  // the goal reached, passed, or no figure to go by
}

AnimatedCircularProgressViewConfig CaloriesConsumedWidgetView::ringConfiguration(double height) {
    return AnimatedCircularProgressViewConfig{
        .trackBackgroundColor = QRVColor::neutralsBackground(),
        .trackForegroundColor = QRVColor::brandSecondary(),
        .trackOverageForegroundColor = QRVColor::brandPrimaryTxt(),
        .trackOverageBackgroundColor = QRVColor::brandSecondaryBG(),
        .trackWidth = height * kTrackWidthRatio,
        .textAccessibilityIdPrefix = "EnergyStatsView",
        .titleFont = catalog::font(QRVFont::title24Bold, true),
        .titleColor = QRVColor::neutralsPrimary(),
        .subtitleFont = catalog::font(QRVFont::footnote12Regular, false),
        .subtitleColor = QRVColor::neutralsSecondary(),
    };
}

View CaloriesConsumedWidgetView::body() const {
    View content;
    switch (sizeFamily) {
        case WidgetFamily::systemMedium:
            content = homeScreen();
            break;
        case WidgetFamily::accessoryCircular:
            content = circular();
            break;
        case WidgetFamily::accessoryRectangular:
            content = rectangular();
            break;
        case WidgetFamily::accessoryInline:
            content = inlineText();
            break;
        case WidgetFamily::systemSmall:
        case WidgetFamily::systemLarge:
        case WidgetFamily::systemExtraLarge:
            content = homeScreen();
            break;
    }
    return content.widgetURL(deepLink(sizeFamily));
}

View CaloriesConsumedWidgetView::homeScreen() const {
    if (!viewModel.data.isLoggedIn)
        return WidgetLoggedOutView{.errorText = loginPrompt(), .sizeFamily = sizeFamily};

    const CaloriesConsumedWidgetViewModel model = viewModel;
    return GeometryReader([model](Size size) -> View {
               const double height = size.height;
               const double ringSide = height * kRingHeightRatio;
               const double buttonsHeight = height * kButtonsHeightRatio;
               // What the ring and the buttons leave, shared equally above,
               // between and below them.
               const double gap = std::max(0.0, (height - ringSide - buttonsHeight) / 3);

               const auto& data = model.data;
               View ring = AnimatedCircularProgressView{ringConfiguration(height), data.remaining,
                                                        data.subtitle, data.progress, data.reverseProgress}
                               .body()
                               .frame(ringSide, ringSide);
               View column =
                   VStack({ring, actionButtons(data.shouldShowBarcodeButton, {ringSide, buttonsHeight})},
                          HorizontalAlignment::center, gap);

               const double statsWidth = size.width - 2 * kSideMargin - ringSide - kColumnSpacing;
               View content = column;
               if (statsWidth >= kMinimumStatsWidth)
                   content =
                       HStack({column, statRows(model).frame(statsWidth, ringSide + gap + buttonsHeight)},
                              VerticalAlignment::center, kColumnSpacing);
               return content.frame(size.width, size.height);
           })
        .padding(kOuterInset)
        .removableBackground(QRVColor::neutralsMidground2(), Edges::all());
}

View CaloriesConsumedWidgetView::circular() const {
    const auto& data = viewModel.data;
    if (!data.isLoggedIn)
        return lockScreenText(loginPrompt(), QRVFont::label12Medium)
            .lineLimit(3)
            .minimumScaleFactor(0.6)
            .padding(kGaugeInset + kGaugeLineWidth);

    const StrokeStyle stroke{.lineWidth = kGaugeLineWidth,
                             .lineCap = LineCap::round,
                             .lineJoin = LineJoin::miter,
                             .miterLimit = 10,
                             .dash = {}};
    auto arc = [](double to) {
        return Circle().trim(0, to).rotation(Angle::fromRadians(kGaugeRotationRadians));
    };
    View figure =
        VStack({lockScreenText(data.remaining, QRVFont::subhead14Bold).lineLimit(1).minimumScaleFactor(0.5),
                lockScreenText(data.condensedEnergyUnitTitle, QRVFont::micro10Regular)
                    .lineLimit(1)
                    .minimumScaleFactor(0.7)},
               HorizontalAlignment::center, 0)
            .padding(kGaugeLineWidth + 3);
    return ZStack({arc(kGaugeArcLength).stroke(QRVColor::neutralsBlack().opacity(kGaugeTrackOpacity), stroke),
                   arc(gaugeArcFraction(data.progress)).stroke(QRVColor::neutralsWhite(), stroke), figure})
        .padding(kGaugeInset);
}

View CaloriesConsumedWidgetView::rectangular() const {
    const auto& data = viewModel.data;
    if (!data.isLoggedIn)
        return lockScreenText(loginPrompt(), QRVFont::body14Bold)
            .lineLimit(3)
            .minimumScaleFactor(0.7)
            .frame(
                FlexibleFrame{.maxWidth = infinity, .maxHeight = infinity, .alignment = Alignment::leading});

    const auto stats = viewModel.stats();
    auto statLine = [&](CaloriesConsumedWidgetStatType type) -> View {
        const auto found = stats.find(type);
        if (found == stats.end()) return EmptyView();
        const auto& stat = found->second;
        return HStack(
            {Image(stat.icon).resizable().tinted(QRVColor::neutralsWhite()).frame(12, 12),
             lockScreenText(stat.title, QRVFont::body14Regular).lineLimit(1).minimumScaleFactor(0.7),
             Spacer(4), lockScreenText(stat.value, QRVFont::body14Bold).lineLimit(1).minimumScaleFactor(0.6)},
            VerticalAlignment::center, 4);
    };
    return VStack({lockScreenText(data.remaining + " " + data.subtitle, QRVFont::body16Bold)
                       .lineLimit(1)
                       .minimumScaleFactor(0.6),
                   statLine(CaloriesConsumedWidgetStatType::food),
                   statLine(CaloriesConsumedWidgetStatType::exercise)},
                  HorizontalAlignment::leading, 2)
        .frame(FlexibleFrame{.maxWidth = infinity, .maxHeight = infinity, .alignment = Alignment::leading});
}

View CaloriesConsumedWidgetView::inlineText() const {
    const auto& data = viewModel.data;
    std::string line = data.isLoggedIn ? data.remaining + " " + data.subtitle : loginPrompt();
    return Text(std::move(line))
        .foregroundColor(QRVColor::neutralsWhite())
        .lineLimit(1)
        .minimumScaleFactor(0.5);
}

}  // namespace qrv::widget
