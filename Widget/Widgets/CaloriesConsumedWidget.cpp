#include "Widget/Widgets/CaloriesConsumedWidget.hpp"

#include "Widget/Calories/CaloriesConsumedWidgetView.hpp"
#include "Widget/Providers/CaloriesWidgetProvider.hpp"

namespace qrv::widget {

using platform::WidgetFamily;

WidgetContent CaloriesConsumedWidget::content(const CaloriesConsumedDataEntry& entry, WidgetFamily family) {
    const CaloriesConsumedWidgetView view{CaloriesConsumedWidgetViewModel{entry}, family};
    return WidgetContent{[view] { return view.body(); }, nullptr};
}

std::optional<WidgetConfiguration> CaloriesConsumedWidget::body(int systemVersion) const {
    auto configuration =
        WidgetConfiguration(
            std::string(kind),
            [](const WidgetDataCacheReaderEnvironment& environment) -> WidgetProviderRef {
                return std::make_shared<ErasedWidgetProvider<CaloriesWidgetProvider>>(
                    CaloriesWidgetProvider::make(environment));
            },
            [](const WidgetEntry& entry, WidgetFamily family, platform::ColorScheme) {
                const auto* calories = entry.as<CaloriesConsumedDataEntry>();
                return calories ? content(*calories, family) : emptyWidgetContent();
            })
            .configurationDisplayName(std::string(displayNameKey))
            .description(std::string(descriptionKey))
            .supportedFamilies(joinedFamilies({WidgetFamily::systemSmall, WidgetFamily::systemMedium},
                                              {WidgetFamily::accessoryInline, WidgetFamily::accessoryCircular}));
    if (systemVersion >= kInteractiveWidgetsSystemVersion)
        return std::move(configuration).contentMarginsDisabled();
    return configuration;
}

}  // namespace qrv::widget
