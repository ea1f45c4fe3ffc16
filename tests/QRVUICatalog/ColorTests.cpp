#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "QRVUICatalog/Colors/HexColor.hpp"
#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Colors/ResourceBundle.hpp"

namespace qrv::catalog {
namespace {

using platform::Color;
using platform::ColorScheme;
using platform::Rgba;

using Bytes = std::array<int, 4>;  // red, green, blue, alpha

Bytes bytesOf(const Rgba& c) {
    auto byte = [](double v) { return static_cast<int>(std::lround(v * 255.0)); };
    return {byte(c.red), byte(c.green), byte(c.blue), byte(c.alpha)};
}

TEST(HexColor, ParsesByLengthOfTrimmedText) {
    struct Case {
        const char* text;
        Bytes expected;
    };
    const Case cases[] = {
        {"#FA9B31", {250, 155, 49, 255}},
        {"FFF", {255, 255, 255, 255}},
        {"#abc", {0xAA, 0xBB, 0xCC, 255}},
        {"#00000080", {0, 0, 0, 128}},
        {"11223344", {0x11, 0x22, 0x33, 0x44}},  // alpha last, not first
        {"  #fa9b31\n", {250, 155, 49, 255}},    // blanks and hash around six digits
        {"(#102030)", {0x10, 0x20, 0x30, 255}},
        {"#12345", {0, 0, 0, 255}},  // five digits: opaque black
        {"", {0, 0, 0, 255}},
        {"#FFFFFFFFF", {0, 0, 0, 255}},    // nine digits
        {"12G456", {0, 0, 0x12, 255}},     // junk inside: only the prefix scanned
        {"zzzzzz", {0, 0, 0, 255}},        // nothing scannable counts as 0
        {"0x1234", {0, 0x12, 0x34, 255}},  // the scanner takes the 0x prefix; six characters
        {"#FFé", {0, 255, 255, 255}},      // three characters; the scan stops at é and reads 0xFF
    };
    for (const auto& c : cases) EXPECT_EQ(bytesOf(rgbaWithHexString(c.text)), c.expected) << c.text;
}

TEST(QRVColor, EveryTokenResolvesFromTheBundleByItsOwnName) {
    std::set<std::string> seen;
    for (auto name : QRVColor::assetNames()) {
        EXPECT_TRUE(seen.insert(std::string(name)).second) << "duplicate " << name;
        EXPECT_EQ(QRVColor::named(name).name, name);
    }
    EXPECT_EQ(seen.size(), 78u);
}

TEST(QRVColorDeathTest, MissingAssetStopsTheProgram) {
    EXPECT_DEATH(QRVColor::named("noSuchAsset"), "missing colour asset named \"noSuchAsset\"");
}

TEST(ResourceBundle, FirstCandidateHoldingTheBundleWins) {
    const auto root = std::filesystem::temp_directory_path() / ("qrv-bundle-" + std::to_string(::getpid()));
    std::filesystem::remove_all(root);
    for (const char* dir :
         {"a", "b/QRVUICatalog_QRVUICatalog.bundle", "c/QRVUICatalog_QRVUICatalog.bundle"}) {
        std::filesystem::create_directories(root / dir);
    }
    std::ofstream(root / "a" / "QRVUICatalog_QRVUICatalog.bundle");  // a file is not a bundle
    EXPECT_EQ(findResourceBundle({root / "a", root / "b", root / "c"}),
              root / "b/QRVUICatalog_QRVUICatalog.bundle");
    EXPECT_EQ(findResourceBundle({root / "c", root / "b"}), root / "c/QRVUICatalog_QRVUICatalog.bundle");
    EXPECT_EQ(findResourceBundle({root / "a"}), std::nullopt);
    EXPECT_EQ(findResourceBundle({}), std::nullopt);
    std::filesystem::remove_all(root);
}

TEST(ColorAssetTable, ReadsVariantsAndRejectsMalformedValues) {
    const auto table = ColorAssetTable::parse(
        R"({"colors": {"a": {"light": "#FF000080", "dark": "#00FF00"}, "b": {"light": "#0000FF"}}})");
    EXPECT_EQ(bytesOf(table.color("a")->light), (Bytes{255, 0, 0, 128}));
    EXPECT_EQ(bytesOf(table.color("a")->dark), (Bytes{0, 255, 0, 255}));
    EXPECT_EQ(table.color("b")->dark, table.color("b")->light);  // one value serves both schemes
    EXPECT_FALSE(table.color("c"));
    for (const char* bad :
         {R"({"colors": {"a": {"light": "FF0000"}}})", R"({"colors": {"a": {"light": "#FF00"}}})",
          R"({"colors": {"a": {"light": "#GG0000"}}})", R"({"colors": {"a": {}}})", R"([1])", "{"}) {
        EXPECT_THROW(ColorAssetTable::parse(bad), std::runtime_error) << bad;
    }
}

// WCAG relative luminance and contrast ratio; translucent colours are laid
// over the background first.
double luminance(const Rgba& c) {
    auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(c.red) + 0.7152 * linear(c.green) + 0.0722 * linear(c.blue);
}

double contrast(Rgba fg, const Rgba& bg) {
    fg = {fg.red * fg.alpha + bg.red * (1 - fg.alpha), fg.green * fg.alpha + bg.green * (1 - fg.alpha),
          fg.blue * fg.alpha + bg.blue * (1 - fg.alpha), 1};
    const double a = luminance(fg), b = luminance(bg);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(QRVColor, TextColoursReachAAContrastOnTheSurfacesTheyAreDrawnOn) {
    struct Pair {
        const Color& text;
        const Color& surface;
        double minimum;  // 4.5 for text, 3 for graphics
    };
    const Color& card = QRVColor::neutralsMidground2();   // widget background
    const Color& panel = QRVColor::neutralsMidground1();  // water panel
    const Color& white = QRVColor::neutralsWhite();
    const Pair pairs[] = {
        {QRVColor::neutralsPrimary(), card, 4.5},
        {QRVColor::neutralsPrimary(), panel, 4.5},
        {QRVColor::neutralsPrimaryTxt(), card, 4.5},
        {QRVColor::neutralsSecondary(), card, 4.5},
        {QRVColor::neutralsSecondary(), panel, 4.5},
        {QRVColor::neutralsTertiary(), card, 4.5},
        {QRVColor::neutralsTertiary(), panel, 4.5},
        {QRVColor::brandPrimaryTxt(), card, 4.5},
        {QRVColor::brandPrimaryTxt(), panel, 4.5},
        {QRVColor::brandPrimaryTxt(), QRVColor::brandPrimaryBG(), 4.5},
        {QRVColor::brandSecondaryTxt(), QRVColor::brandSecondaryBG(), 4.5},
        {QRVColor::brandTertiaryTxt(), QRVColor::brandTertiaryBG(), 4.5},
        // Captions of prominent buttons are white on the brand tint.
        {white, QRVColor::brandPrimary(), 4.5},
        {QRVColor::neutralsInverse(), QRVColor::brandPrimary(), 4.5},
        {QRVColor::brandPrimary(), card, 3},  // water column and icon tint
        {QRVColor::brandPrimary(), panel, 3},
        {QRVColor::carbTxt(), card, 4.5},
        {QRVColor::carbTxt(), QRVColor::carbBG(), 4.5},
        {QRVColor::fatTxt(), card, 4.5},
        {QRVColor::fatTxt(), QRVColor::fatBG(), 4.5},
        {QRVColor::proteinTxt(), card, 4.5},
        {QRVColor::proteinTxt(), QRVColor::proteinBG(), 4.5},
        {QRVColor::positive(), card, 4.5},
        {QRVColor::positiveTxt(), QRVColor::positiveBG(), 4.5},
        {QRVColor::negative(), card, 4.5},
        {QRVColor::negativeTxt(), QRVColor::negativeBG(), 4.5},
        {QRVColor::warningTxt(), QRVColor::warningBG(), 4.5},
    };
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        for (const auto& [text, surface, minimum] : pairs) {
            EXPECT_GE(contrast(text.resolved(scheme), surface.resolved(scheme)), minimum)
                << text.name << " on " << surface.name
                << (scheme == ColorScheme::dark ? " (dark)" : " (light)");
        }
    }
    // Brand-coloured text is for light surfaces; the water widget writes white
    // text in the dark scheme only.
    EXPECT_GE(contrast(QRVColor::brandPrimary().light, card.light), 4.5);
    EXPECT_GE(contrast(white.dark, card.dark), 4.5);
}

}  // namespace
}  // namespace qrv::catalog
