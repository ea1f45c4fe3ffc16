#include "QRVUICatalog/Colors/QRVColor.hpp"

#include <string>

#include "QRVUICatalog/Colors/HexColor.hpp"
#include "QRVUICatalog/Colors/ResourceBundle.hpp"
#include "QRVUICatalog/Fatal.hpp"

namespace qrv::catalog {

platform::Color QRVColor::named(std::string_view assetName) {
    if (auto color = bundleColorAssets().color(assetName)) return *std::move(color);
    fatalError("missing colour asset named \"" + std::string(assetName) + "\" in bundle " +
               std::string(kResourceBundleName));
}

// Each token has its own function-local constant, so first use from several
// threads initialises it exactly once and touching one never touches another.
#define QRV_DEFINE_COLOR_TOKEN(name)                       \
    const platform::Color& QRVColor::name() {              \
        static const platform::Color color = named(#name); \
        return color;                                      \
    }
QRV_COLOR_ASSET_TOKENS(QRV_DEFINE_COLOR_TOKEN)
#undef QRV_DEFINE_COLOR_TOKEN

const platform::Color& QRVColor::exercise() {
    static const platform::Color color = [] {
        platform::Color c = colorWithHexString("#FA9B31");
        c.name = "exercise";
        return c;
    }();
    return color;
}

std::vector<platform::Color> QRVColor::graphMealColors() {
    static const std::vector<platform::Color> colors{range7(), range9(), range6(),
                                                     range5(), range8(), range4()};
    return colors;
}

const std::array<std::string_view, QRVColor::kAssetTokenCount>& QRVColor::assetNames() {
#define QRV_COLOR_TOKEN_NAME(name) #name,
    static constexpr std::array<std::string_view, kAssetTokenCount> names{
        QRV_COLOR_ASSET_TOKENS(QRV_COLOR_TOKEN_NAME)};
#undef QRV_COLOR_TOKEN_NAME
    return names;
}

}  // namespace qrv::catalog
