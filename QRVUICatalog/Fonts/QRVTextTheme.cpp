#include "QRVUICatalog/Fonts/QRVTextTheme.hpp"

namespace qrv::catalog {

QRVTextTheme::QRVTextTheme(QRVLabelTheme labelTheme, std::optional<platform::Color> foregroundColor) {
    style_.font = themeFont(labelTheme);
    style_.color = foregroundColor ? *std::move(foregroundColor) : themeTextColor(labelTheme);
    style_.lineHeight = lineHeightForPointSize(style_.font.size);
}

QRVTextTheme::QRVTextTheme(const TextTheme& textTheme) {
    style_.font = textTheme.font();
    style_.color = textTheme.color();
    style_.lineHeight = lineHeightForPointSize(style_.font.size);
}

platform::View QRVTextTheme::apply(const platform::View& content) const {
    return content.font(style_.font).foregroundColor(style_.color);
}

platform::View font(const platform::View& content, QRVFont style, bool largerForIpad) {
    return content.font(font(style, largerForIpad));
}

}  // namespace qrv::catalog
