#include "Widget/Shared/WidgetLoggedOutView.hpp"

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"

namespace qrv::widget {

using namespace qrv::platform;

namespace {

// The lock-screen placeholder is a table key that stands for itself.
constexpr const char* kPlaceholderKey = "--";

View message(const std::string& text) {
    Text label(text);
    return GeometryReader([label](Size size) -> View {
        return label.font(catalog::font(catalog::QRVFont::headline16Medium, false))
            .foregroundColor(catalog::QRVColor::neutralsPrimary())
            .padding(WidgetLoggedOutView::kMessagePadding)
            .frame(size.width, size.height, Alignment::center);
    });
}

}  // namespace

View WidgetLoggedOutView::body() const {
    const WidgetLoggedOutView view = *this;
    return EnvironmentReader([view](const Environment& environment) -> View {
        const WidgetFamily family = view.sizeFamily.value_or(environment.widgetFamily);
        switch (family) {
            case WidgetFamily::accessoryCircular:
            case WidgetFamily::accessoryRectangular:
                return Text(localizedString(kPlaceholderKey));
            case WidgetFamily::accessoryInline:
                // One line of the message: all an inline slot can hold.
                return Text(view.errorText.value_or("")).lineLimit(1);
            case WidgetFamily::systemSmall:
            case WidgetFamily::systemMedium:
            case WidgetFamily::systemLarge:
            case WidgetFamily::systemExtraLarge:
                break;
        }
        return message(view.errorText.value_or(""))
            .background(catalog::QRVColor::neutralsMidground2(), Edges::all());
    });
}

}  // namespace qrv::widget
