#include "QRVUICatalog/Fonts/TextTheme.hpp"

#include <string>

#include "QRVUICatalog/Fatal.hpp"

namespace qrv::catalog {

std::optional<TextWeight> textWeightFromRawValue(int rawValue) {
    if (rawValue < 0 || rawValue > 9) return std::nullopt;
    return static_cast<TextWeight>(rawValue);
}

platform::FontWeight platformWeight(TextWeight weight) {
    using platform::FontWeight;
    switch (weight) {
        case TextWeight::_100:
            return FontWeight::ultraLight;
        case TextWeight::_200:
            return FontWeight::thin;
        case TextWeight::_300:
            return FontWeight::light;
        case TextWeight::_400:
            return FontWeight::regular;
        case TextWeight::_500:
            return FontWeight::medium;
        case TextWeight::_600:
            return FontWeight::semibold;
        case TextWeight::_700:
            return FontWeight::bold;
        case TextWeight::_800:
            return FontWeight::heavy;
        case TextWeight::_900:
        case TextWeight::_950:
            return FontWeight::black;
    }
    fatalError("unexpected TextWeight raw value " + std::to_string(static_cast<int>(weight)));
}

platform::Font TextTheme::font() const { return platform::Font::system(size_, platformWeight(weight_)); }

}  // namespace qrv::catalog
