#include "Widget/Water/WaterLevelWidgetView.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"

namespace qrv::widget {

using namespace qrv::platform;
using catalog::QRVColor;

namespace {

// A height counts as changed past a hundredth of a point: less would not show.
constexpr double kHeightTolerance = 0.01;

}  // namespace

bool WaterLevelWidgetView::isReached(const WaterLevelRow& row) const {
    return viewModel && static_cast<float>(row.value) <= viewModel->waterAmount();
}

bool WaterLevelWidgetView::afterLayout(const std::vector<std::pair<std::string, Rect>>& preferences) const {
    if (!viewModel) return false;
    const Rect* glass = nullptr;
    for (const auto& [key, frame] : preferences)
        if (key == HeightPreferenceKey::name) glass = &frame;
    if (glass == nullptr) return false;

    const double before = viewModel->waterHeight();
    viewModel->setTotalHeight(glass->height());
    for (const auto& row : viewModel->rows()) {
        const std::string key = YPositionPreferenceKey::name(row.value);
        for (const auto& [reported, frame] : preferences)
            if (reported == key) viewModel->updateRowPosition(row.value, frame.midY() - glass->minY());
    }
    viewModel->updateWaterHeight();
    return std::abs(viewModel->waterHeight() - before) > kHeightTolerance;
}

View WaterLevelWidgetView::body() const {
    if (!viewModel) return EmptyView();
    const WaterLevelWidgetView view = *this;
    return GeometryReader([view](Size size) -> View {
        const auto& model = *view.viewModel;
        const double rowHeight = size.height / kRowsHigh;

        std::vector<View> marks, labels;
        for (const auto& row : model.rows()) {
            const bool reached = view.isReached(row);
            View mark = Divider()
                            .overlay(reached ? QRVColor::brandPrimaryBG() : QRVColor::neutralsQuaternary())
                            .frame(FlexibleFrame{
                                .minWidth = hasWidthFlag(row) ? std::optional(kShortMarkWidth) : std::nullopt,
                                .maxWidth = hasWidthFlag(row) ? kShortMarkWidth : infinity,
                                .minHeight = 1,
                                .maxHeight = 1,
                                .alignment = Alignment::center})
                            .framePreference(YPositionPreferenceKey::name(row.value));
            marks.push_back(mark.frame(FlexibleFrame{.maxWidth = infinity,
                                                     .minHeight = rowHeight,
                                                     .maxHeight = rowHeight,
                                                     .alignment = Alignment::center}));
            View label = EmptyView();
            // The mark's value goes in as text: as a number it would be grouped
            // by the locale ("1,750" beside a total of "1250 ml").
            if (row.type == WaterLevelRowType::large)
                label =
                    Text(localizedStringWithFormat(localizedString("%@"), {std::to_string(row.value)}))
                        .font(catalog::font(catalog::QRVFont::label12Medium, false))
                        .foregroundColor(reached ? QRVColor::brandPrimaryTxt() : QRVColor::neutralsPrimary())
                        .lineLimit(1)
                        .minimumScaleFactor(0.6);
            labels.push_back(label.frame(FlexibleFrame{.maxWidth = infinity,
                                                       .minHeight = rowHeight,
                                                       .maxHeight = rowHeight,
                                                       .alignment = Alignment::trailing}));
        }
        const EdgeInsets belowLowestMark{0, 0, rowHeight / 2, 0};
        View scale = VStack(std::move(marks), HorizontalAlignment::center, 0).padding(belowLowestMark);

        const double water = std::clamp(model.waterHeight(), 0.0, size.height);
        // The water is the amount the widget shows: the accent group. The
        // glass is a well in the widget's background (the platform's material
        // shows there once the background is replaced or removed), so the
        // scale's marks stay readable over it in every mode.
        View column =
            VStack({Spacer(0), Rectangle().fill(QRVColor::brandPrimary()).frame(std::nullopt, water)},
                   HorizontalAlignment::center, 0)
                .widgetAccentable();
        View glass = ZStack({column, scale})
                         .removableBackground(QRVColor::neutralsMidground1(), Edges::none())
                         .mask(RoundedRectangle(kCornerRadius).fill(Color::black()))
                         .framePreference(HeightPreferenceKey::name);
        View scaleLabels = VStack(std::move(labels), HorizontalAlignment::trailing, 0)
                               .padding(belowLowestMark)
                               .frame(kLabelWidth, std::nullopt);
        return HStack({scaleLabels, glass}, VerticalAlignment::center, 8).frame(size.width, size.height);
    });
}

}  // namespace qrv::widget
