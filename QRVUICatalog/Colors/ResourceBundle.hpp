#pragma once
// The catalog's resource bundle: a directory "QRVUICatalog_QRVUICatalog.bundle"
// shipped beside the programs, holding the colour assets (Colors.json: asset
// name -> light and dark sRGB value).
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/drawing/Color.hpp"

namespace qrv::catalog {

inline constexpr std::string_view kResourceBundleName = "QRVUICatalog_QRVUICatalog";
inline constexpr std::string_view kResourceBundleDirectory = "QRVUICatalog_QRVUICatalog.bundle";
inline constexpr std::string_view kColorAssetsFile = "Colors.json";

// Asset name -> colour with both variants. File format:
//   {"colors": {"brandPrimary": {"light": "#0B7A66", "dark": "#3DCCA9"}, ...}}
// Values are "#RRGGBB" or "#RRGGBBAA"; "dark" may be left out when both
// schemes share the colour.
class ColorAssetTable {
  public:
    // Throws std::runtime_error naming the offending entry.
    static ColorAssetTable parse(std::string_view json);
    static ColorAssetTable load(const std::filesystem::path& file);

    std::optional<platform::Color> color(std::string_view assetName) const;
    std::size_t size() const { return colors_.size(); }

  private:
    std::map<std::string, platform::Color, std::less<>> colors_;
};

// The directories searched for the bundle, in order: the program's resource
// directory, the directory of the image (program or library) that holds the
// catalog's code, the program's own directory.
std::vector<std::filesystem::path> resourceBundleCandidates();

// The first candidate that holds the bundle directory.
std::optional<std::filesystem::path> findResourceBundle(const std::vector<std::filesystem::path>& candidates);

// Resolved once per process; stops the program with "unable to find bundle
// named QRVUICatalog_QRVUICatalog" when no candidate holds the bundle.
const std::filesystem::path& resourceBundlePath();

// The bundle's colour assets, loaded once; stops the program when the table is
// missing or malformed.
const ColorAssetTable& bundleColorAssets();

}  // namespace qrv::catalog
