#include "Widget/Widgets/WaterWidget.hpp"

#include <memory>

#include "Widget/Providers/WaterWidgetProvider.hpp"
#include "Widget/Water/WaterWidgetView.hpp"

namespace qrv::widget {

using platform::WidgetFamily;

WidgetContent WaterWidget::content(const WaterDataEntry& entry, WidgetFamily family, platform::ColorScheme scheme) {
    // The view model is a reference type: the glass is measured after the
    // first layout and drawn again, so both closures share the one model.
    const WaterWidgetView view{scheme, family, std::make_shared<WaterWidgetViewModel>(entry)};
    return WidgetContent{
        [view] {
            return view.body()
                .frame(platform::FlexibleFrame{.maxWidth = platform::infinity,
                                               .maxHeight = platform::infinity,
                                               .alignment = platform::Alignment::center})
                .containerBackground(platform::Color::white());
        },
        [view](const std::vector<std::pair<std::string, platform::Rect>>& preferences) {
            return view.afterLayout(preferences);
        }};
}

std::optional<WidgetConfiguration> WaterWidget::body(int systemVersion) const {
    if (systemVersion < kInteractiveWidgetsSystemVersion) return std::nullopt;
    return WidgetConfiguration(
               std::string(kind),
               [](const WidgetDataCacheReaderEnvironment& environment) -> WidgetProviderRef {
                   return std::make_shared<ErasedWidgetProvider<WaterWidgetProvider>>(
                       WaterWidgetProvider::make(environment));
               },
               [](const WidgetEntry& entry, WidgetFamily family, platform::ColorScheme scheme) {
                   const auto* water = entry.as<WaterDataEntry>();
                   return water ? content(*water, family, scheme) : emptyWidgetContent();
               })
        .configurationDisplayName(std::string(displayNameKey))
        .description(std::string(descriptionKey))
        .supportedFamilies(joinedFamilies({WidgetFamily::systemSmall, WidgetFamily::systemMedium}, {}))
        .contentMarginsDisabled();
}

}  // namespace qrv::widget
