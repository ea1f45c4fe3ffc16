#include "QRVUICatalog/Fonts/QRVFont.hpp"

#include <cmath>
#include <string>

#include "QRVUICatalog/Fatal.hpp"
#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"

namespace qrv::catalog {
namespace {

using platform::FontWeight;

struct Style {
    double size;
    FontWeight weight;
};

// By raw value.
constexpr std::array<Style, 26> kStyles{{
    {14, FontWeight::medium},   {12, FontWeight::medium},  {12, FontWeight::regular},
    {72, FontWeight::bold},     {48, FontWeight::bold},    {34, FontWeight::bold},
    {28, FontWeight::bold},     {24, FontWeight::bold},    {20, FontWeight::bold},
    {18, FontWeight::semibold}, {16, FontWeight::medium},  {14, FontWeight::bold},
    {14, FontWeight::medium},   {12, FontWeight::medium},  {16, FontWeight::regular},
    {16, FontWeight::bold},     {14, FontWeight::regular}, {14, FontWeight::bold},
    {12, FontWeight::regular},  {12, FontWeight::bold},    {16, FontWeight::regular},
    {16, FontWeight::bold},     {14, FontWeight::bold},    {14, FontWeight::medium},
    {10, FontWeight::regular},  {10, FontWeight::bold},
}};

const Style& styleOf(QRVFont font) {
    const int raw = rawValue(font);
    if (raw < 0 || raw >= static_cast<int>(kStyles.size())) {
        fatalError("unexpected QRVFont raw value " + std::to_string(raw));
    }
    return kStyles[static_cast<std::size_t>(raw)];
}

double enlargedSize(QRVFont font, bool largerForIpad) {
    const double size = styleOf(font).size;
    return largerForIpad && currentDeviceIdiom() == DeviceIdiom::pad ? size + kIpadEnlargement : size;
}

}  // namespace

const std::array<QRVFont, 26> kAllQRVFonts = [] {
    std::array<QRVFont, 26> all{};
    for (int i = 0; i < 26; ++i) all[static_cast<std::size_t>(i)] = static_cast<QRVFont>(i);
    return all;
}();

std::optional<QRVFont> qrvFontFromRawValue(int raw) {
    if (raw < 0 || raw >= static_cast<int>(kStyles.size())) return std::nullopt;
    return static_cast<QRVFont>(raw);
}

double pointSize(QRVFont font) { return styleOf(font).size; }
platform::FontWeight fontWeight(QRVFont font) { return styleOf(font).weight; }

platform::Font font(QRVFont style, bool largerForIpad) {
    return platform::Font::system(enlargedSize(style, largerForIpad), styleOf(style).weight);
}

double lineHeightForPointSize(double size) {
    const double factor = size < 24 ? 1.4 : 1.2;
    return std::ceil(size * factor / 2.0 - 1e-9) * 2.0;
}

FontWithLineHeight fontWithLineHeight(QRVFont style, bool largerForIpad) {
    const platform::Font f = font(style, largerForIpad);
    return FontWithLineHeight{largerForIpad, f, lineHeightForPointSize(f.size)};
}

}  // namespace qrv::catalog
