#include "Widget/Macronutrients/MacronutrientsWidgetView.hpp"

#include <algorithm>
#include <cmath>

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Calories/AnimatedCircularProgressView.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetValueView.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"

namespace qrv::widget {

using namespace qrv::platform;
using catalog::QRVColor;
using catalog::QRVFont;

namespace {

constexpr std::array<MacronutrientsDataValueType, 3> kOrder{MacronutrientsDataValueType::carbs,
                                                            MacronutrientsDataValueType::fat,
                                                            MacronutrientsDataValueType::protein};

// The lock screen draws in one tint over the wallpaper: light text, whose
// brightness is all that counts.
View lockScreenText(std::string text, QRVFont style) {
    return Text(std::move(text)).font(catalog::font(style, false)).foregroundColor(QRVColor::neutralsWhite());
}

View fill(View content, Alignment alignment = Alignment::center) {
    return std::move(content).frame(
        FlexibleFrame{.maxWidth = infinity, .maxHeight = infinity, .alignment = alignment});
}

}  // namespace

std::optional<std::vector<MacronutrientsWidgetValueViewModel>> MacronutrientsWidgetView::values() const {
    if (!viewModel.data.isLoggedIn) return std::nullopt;
    std::vector<MacronutrientsWidgetValueViewModel> out;
    for (auto type : kOrder) {
        auto value = viewModel.valueViewModel(type);
        if (!value) return std::nullopt;
        out.push_back(std::move(*value));
    }
    return out;
}

std::string MacronutrientsWidgetView::gramCount(double grams) {
    // Whole grams, rounded as the rings' figures are (halves to even).
    const double whole = std::nearbyint(grams);
    if (!std::isfinite(whole) || std::abs(whole) >= 9.2e18) return localizedString("--");
    return localizedStringWithFormat(localizedString("%lld"), {static_cast<std::int64_t>(whole)});
}

std::string MacronutrientsWidgetView::loginPrompt() const {
    return viewModel.localizedProvider->localizedString("dashb.widget.login.long", "Log in to view data.");
}

View MacronutrientsWidgetView::body() const {
    switch (sizeFamily) {
        case WidgetFamily::accessoryCircular:
            return circular();
        case WidgetFamily::accessoryRectangular:
            return rectangular();
        case WidgetFamily::accessoryInline:
            return inlineText();
        case WidgetFamily::systemSmall:
        case WidgetFamily::systemMedium:
        case WidgetFamily::systemLarge:
        case WidgetFamily::systemExtraLarge:
            break;
    }
    return medium();
}

View MacronutrientsWidgetView::medium() const {
    std::vector<View> gauges;
    const auto shown = values();
    if (shown) {
        // A narrow widget has no room for three rings with figures inside: one
        // line per nutrient instead, each with a small ring.
        const auto values = *shown;
        View list = compactList(values);
        View rings = HStack(
            [&] {
                std::vector<View> out;
                for (const auto& value : values) out.push_back(fill(MacronutrientsWidgetValueView{value}));
                return out;
            }(),
            VerticalAlignment::center, 8);
        return GeometryReader([list, rings](Size size) -> View {
                   const bool narrow = size.width < kMinimumWidthForRings;
                   View content = narrow ? list.padding(kVerticalPadding)
                                         : rings.padding(Edges::horizontal(), kHorizontalPadding);
                   return content.frame(size.width, size.height);
               })
            .removableBackground(QRVColor::neutralsMidground2(), Edges::all());
    }
    if (shown) {
        for (const auto& value : *shown) gauges.push_back(fill(MacronutrientsWidgetValueView{value}));
    } else {
        // No figures: empty rings reading "--", under the nutrients' names when
        // the record has them.
        for (auto type : kOrder) {
            const auto value = viewModel.data.isLoggedIn ? viewModel.valueViewModel(type) : std::nullopt;
            gauges.push_back(
                fill(MacronutrientsWidgetValueView::placeholder(value ? value->data.title : "")));
        }
    }
    // The gauges take the whole height (each spaces its name, ring and line
    // within it); logged out, the prompt takes the lower part.
    View content = HStack(std::move(gauges), VerticalAlignment::center, 8);
    if (!viewModel.data.isLoggedIn)
        content = VStack({content, Text(loginPrompt())
                                       .font(catalog::font(QRVFont::headline16Medium, false))
                                       .foregroundColor(QRVColor::neutralsPrimary())
                                       .lineLimit(2)
                                       .minimumScaleFactor(0.7)},
                         HorizontalAlignment::center, 0)
                      .padding(Edges::vertical(), kVerticalPadding);
    return fill(content.padding(Edges::horizontal(), kHorizontalPadding))
        .removableBackground(QRVColor::neutralsMidground2(), Edges::all());
}

View MacronutrientsWidgetView::compactList(const std::vector<MacronutrientsWidgetValueViewModel>& values) {
    const std::string separator = localizedString(" / ");
    const std::string gram = localizedString("unitSystems.gram.abbreviation.plural", "g");
    std::vector<View> rows;
    for (const auto& value : values) {
        constexpr double ringSide = 30, trackWidth = 4;
        View ring = AnimatedCircularProgressView{value.ringConfiguration(trackWidth), "", "",
                                                 value.progress(), value.reverseProgress()}
                        .body()
                        .frame(ringSide, ringSide);
        View texts =
            VStack({Text(value.data.title)
                        .font(catalog::font(QRVFont::label14Medium, false))
                        .foregroundColor(QRVColor::neutralsPrimary())
                        .lineLimit(1)
                        .minimumScaleFactor(0.7),
                    Text(gramCount(value.data.value) + separator + gramCount(value.data.maxValue) + gram)
                        .font(catalog::font(QRVFont::footnote12Regular, false))
                        .foregroundColor(QRVColor::neutralsSecondary())
                        .lineLimit(1)
                        .minimumScaleFactor(0.6)},
                   HorizontalAlignment::leading, 0);
        rows.push_back(
            fill(HStack({ring, texts, Spacer(0)}, VerticalAlignment::center, 8), Alignment::leading));
    }
    return VStack(std::move(rows), HorizontalAlignment::leading, 4);
}

View MacronutrientsWidgetView::circular() const {
    const auto shown = values();
    if (!viewModel.data.isLoggedIn)
        return VStack({lockScreenText(loginPrompt(), QRVFont::label12Medium)
                           .lineLimit(2)
                           .minimumScaleFactor(0.6),
                       lockScreenText(localizedString("--"), QRVFont::label12Medium)},
                      HorizontalAlignment::center, 0)
            .padding(6);

    // One arc per nutrient from twelve o'clock, carbs outermost, each over a
    // dark track; a missing figure leaves its track empty.
    constexpr double lineWidth = 5, gap = 1.5, inset = 2.5;
    const StrokeStyle stroke{.lineWidth = lineWidth,
                             .lineCap = LineCap::round,
                             .lineJoin = LineJoin::miter,
                             .miterLimit = 10,
                             .dash = {}};
    std::vector<View> rings;
    for (std::size_t i = 0; i < kOrder.size(); ++i) {
        double progress = 0;
        if (shown) progress = (*shown)[i].progress();
        const double fraction = std::isnan(progress) ? 0 : std::clamp(progress, 0.0, 1.0);
        const double offset = inset + static_cast<double>(i) * (lineWidth + gap);
        rings.push_back(Circle().stroke(QRVColor::neutralsBlack().opacity(0.7), lineWidth).padding(offset));
        rings.push_back(Circle()
                            .trim(0, fraction)
                            .rotation(Angle::degrees(-90))
                            .stroke(QRVColor::neutralsWhite(), stroke)
                            .padding(offset));
    }
    if (!shown) rings.push_back(lockScreenText(localizedString("--"), QRVFont::label12Medium));
    return ZStack(std::move(rings));
}

View MacronutrientsWidgetView::rectangular() const {
    const auto shown = values();
    if (!viewModel.data.isLoggedIn)
        return fill(
            VStack({lockScreenText(loginPrompt(), QRVFont::body14Bold).lineLimit(2).minimumScaleFactor(0.7),
                    lockScreenText(localizedString("--"), QRVFont::body14Regular)},
                   HorizontalAlignment::leading, 2),
            Alignment::leading);
    if (!shown) return fill(lockScreenText(localizedString("--"), QRVFont::body14Bold), Alignment::leading);

    const std::string separator = localizedString(" / ");
    const std::string gram = localizedString("unitSystems.gram.abbreviation.plural", "g");
    std::vector<View> lines;
    for (const auto& value : *shown) {
        lines.push_back(HStack(
            {lockScreenText(value.data.title, QRVFont::label14Medium).lineLimit(1).minimumScaleFactor(0.7),
             Spacer(6),
             lockScreenText(gramCount(value.data.value) + separator + gramCount(value.data.maxValue) + gram,
                            QRVFont::body14Bold)
                 .lineLimit(1)
                 .minimumScaleFactor(0.6)},
            VerticalAlignment::center, 0));
    }
    return fill(VStack(std::move(lines), HorizontalAlignment::leading, 2), Alignment::leading);
}

View MacronutrientsWidgetView::inlineText() const {
    std::string line;
    if (!viewModel.data.isLoggedIn) {
        // The prompt, then "--" where the figures would stand, as in every family.
        line = loginPrompt() + " " + localizedString("--");
    } else if (const auto shown = values()) {
        const std::string separator = localizedString(" / ");
        const std::string gram = localizedString("unitSystems.gram.abbreviation.plural", "g");
        for (const auto& value : *shown) {
            if (!line.empty()) line += separator;
            line += value.data.title + " " + gramCount(value.data.value) + gram;
        }
    } else {
        line = localizedString("--");
    }
    return Text(std::move(line))
        .foregroundColor(QRVColor::neutralsWhite())
        .lineLimit(1)
        .minimumScaleFactor(0.5);
}

}  // namespace qrv::widget
