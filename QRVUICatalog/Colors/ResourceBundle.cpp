#include "QRVUICatalog/Colors/ResourceBundle.hpp"

#include <simdjson.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "Platform/locale/ResourceLocator.hpp"
#include "QRVUICatalog/Fatal.hpp"

namespace qrv::catalog {
namespace {

// Any object inside this library serves to ask the loader where the library is.
const char imageMarker = 0;

[[noreturn]] void fail(const std::string& reason) { throw std::runtime_error("colour assets: " + reason); }

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The asset file is ours, so it is read strictly: "#RRGGBB" or "#RRGGBBAA".
platform::Rgba parseAssetValue(std::string_view text, std::string_view context) {
    if (text.empty() || text.front() != '#' || (text.size() != 7 && text.size() != 9)) {
        fail(std::string(context) + " is not #RRGGBB or #RRGGBBAA");
    }
    double channels[4] = {0, 0, 0, 1};
    for (std::size_t i = 1, c = 0; i < text.size(); i += 2, ++c) {
        const int high = hexValue(text[i]);
        const int low = hexValue(text[i + 1]);
        if (high < 0 || low < 0) fail(std::string(context) + " has a character that is not a hex digit");
        channels[c] = (high * 16 + low) / 255.0;
    }
    return {channels[0], channels[1], channels[2], channels[3]};
}

}  // namespace

ColorAssetTable ColorAssetTable::parse(std::string_view json) {
    simdjson::dom::parser parser;
    simdjson::padded_string padded(json);
    simdjson::dom::element root;
    if (auto error = parser.parse(padded).get(root)) fail(simdjson::error_message(error));
    simdjson::dom::object colors;
    if (root["colors"].get(colors)) fail("no \"colors\" object");

    ColorAssetTable table;
    for (auto [name, entry] : colors) {
        const std::string key(name);
        std::string_view light;
        if (entry["light"].get(light)) fail("\"" + key + "\" has no light value");
        platform::Color color;
        color.name = key;
        color.light = parseAssetValue(light, "\"" + key + "\".light");
        std::string_view dark;
        color.dark = entry["dark"].get(dark) ? color.light : parseAssetValue(dark, "\"" + key + "\".dark");
        table.colors_.insert_or_assign(key, std::move(color));
    }
    return table;
}

ColorAssetTable ColorAssetTable::load(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) fail("cannot open " + file.string());
    std::ostringstream text;
    text << in.rdbuf();
    return parse(text.str());
}

std::optional<platform::Color> ColorAssetTable::color(std::string_view assetName) const {
    const auto it = colors_.find(assetName);
    if (it == colors_.end()) return std::nullopt;
    return it->second;
}

std::vector<std::filesystem::path> resourceBundleCandidates() {
    std::vector<std::filesystem::path> candidates;
    if (auto dir = platform::programResourceDirectory()) candidates.push_back(*dir);
    if (auto dir = platform::directoryOfImageContaining(&imageMarker)) candidates.push_back(*dir);
    if (auto dir = platform::executableDirectory()) candidates.push_back(*dir);
    return candidates;
}

std::optional<std::filesystem::path> findResourceBundle(
    const std::vector<std::filesystem::path>& candidates) {
    for (const auto& dir : candidates) {
        const auto bundle = dir / kResourceBundleDirectory;
        std::error_code error;
        if (std::filesystem::is_directory(bundle, error)) return bundle;
    }
    return std::nullopt;
}

const std::filesystem::path& resourceBundlePath() {
    static const std::filesystem::path path = [] {
        const auto found = findResourceBundle(resourceBundleCandidates());
        if (!found) fatalError("unable to find bundle named " + std::string(kResourceBundleName));
        return *found;
    }();
    return path;
}

const ColorAssetTable& bundleColorAssets() {
    static const ColorAssetTable table = [] {
        const auto file = resourceBundlePath() / kColorAssetsFile;
        try {
            return ColorAssetTable::load(file);
        } catch (const std::exception& e) {
            fatalError(std::string("unable to load the colour assets of bundle ") +
                       std::string(kResourceBundleName) + ": " + e.what());
        }
    }();
    return table;
}

}  // namespace qrv::catalog
