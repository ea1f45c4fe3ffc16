#include "Widget/Water/WidgetOverlayButton.hpp"

namespace qrv::widget {

using namespace qrv::platform;

std::string WidgetOverlayButton::deepLink(WidgetFamily family) {
    return family == WidgetFamily::systemMedium ? "qrv://qrv/widgets/water_medium"
                                                : "qrv://qrv/widgets/water_small";
}

View WidgetOverlayButton::body() const {
    return EnvironmentReader([](const Environment& environment) -> View {
        if (environment.widgetFamily != WidgetFamily::systemMedium) return EmptyView();
        return Link(deepLink(environment.widgetFamily),
                    View(Color::clear()).frame(FlexibleFrame{.maxWidth = infinity, .maxHeight = infinity}));
    });
}

}  // namespace qrv::widget
