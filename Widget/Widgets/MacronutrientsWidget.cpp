#include "Widget/Widgets/MacronutrientsWidget.hpp"

#include "Widget/Macronutrients/MacronutrientsWidgetView.hpp"
#include "Widget/Providers/MacronutrientsWidgetProvider.hpp"

namespace qrv::widget {

using platform::WidgetFamily;

WidgetContent MacronutrientsWidget::content(const MacronutrientsDataEntry& entry, WidgetFamily family) {
    const MacronutrientsWidgetView view{MacronutrientsWidgetViewModel{entry}, family};
    return WidgetContent{[view] { return view.body().widgetURL(std::string(widgetURL)); }, nullptr};
}

std::optional<WidgetConfiguration> MacronutrientsWidget::body(int systemVersion) const {
    auto configuration =
        WidgetConfiguration(
            std::string(kind),
            [](const WidgetDataCacheReaderEnvironment& environment) -> WidgetProviderRef {
                return std::make_shared<ErasedWidgetProvider<MacronutrientsWidgetProvider>>(
                    MacronutrientsWidgetProvider::make(environment));
            },
            [](const WidgetEntry& entry, WidgetFamily family, platform::ColorScheme) {
                const auto* macros = entry.as<MacronutrientsDataEntry>();
                return macros ? content(*macros, family) : emptyWidgetContent();
            })
            .configurationDisplayName(std::string(displayNameKey))
            .description(std::string(descriptionKey))
            // No small home-screen size: three rings do not fit it.
            .supportedFamilies(joinedFamilies({WidgetFamily::systemMedium},
                                              {WidgetFamily::accessoryInline, WidgetFamily::accessoryRectangular}));
    if (systemVersion >= kInteractiveWidgetsSystemVersion)
        return std::move(configuration).contentMarginsDisabled();
    return configuration;
}

}  // namespace qrv::widget
