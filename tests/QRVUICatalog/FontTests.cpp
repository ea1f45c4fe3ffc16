#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Recorder.hpp"
#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "QRVUICatalog/Fonts/QRVLabelTheme.hpp"
#include "QRVUICatalog/Fonts/QRVTextTheme.hpp"
#include "QRVUICatalog/Fonts/TextTheme.hpp"

namespace qrv::catalog {
namespace {

using platform::FontWeight;

TEST(QRVFont, SizesAndWeightsFollowTheTypeScale) {
    using W = FontWeight;
    const std::vector<std::pair<double, W>> table = {
        {14, W::medium},  {12, W::medium},  {12, W::regular}, {72, W::bold},    {48, W::bold},
        {34, W::bold},    {28, W::bold},    {24, W::bold},    {20, W::bold},    {18, W::semibold},
        {16, W::medium},  {14, W::bold},    {14, W::medium},  {12, W::medium},  {16, W::regular},
        {16, W::bold},    {14, W::regular}, {14, W::bold},    {12, W::regular}, {12, W::bold},
        {16, W::regular}, {16, W::bold},    {14, W::bold},    {14, W::medium},  {10, W::regular},
        {10, W::bold},
    };
    ASSERT_EQ(kAllQRVFonts.size(), table.size());
    for (int raw = 0; raw < 26; ++raw) {
        const auto style = qrvFontFromRawValue(raw);
        ASSERT_TRUE(style) << raw;
        EXPECT_EQ(rawValue(kAllQRVFonts[static_cast<std::size_t>(raw)]), raw);
        const auto f = font(*style, false);
        EXPECT_EQ(f.size, table[static_cast<std::size_t>(raw)].first) << raw;
        EXPECT_EQ(f.weight, table[static_cast<std::size_t>(raw)].second) << raw;
        EXPECT_EQ(f.family, "Inter");
    }
    EXPECT_FALSE(qrvFontFromRawValue(-1));
    EXPECT_FALSE(qrvFontFromRawValue(26));
}

TEST(QRVFont, GrowsByTwoPointsOnlyOnThePadAndOnlyWhenAsked) {
    struct Case {
        DeviceIdiom idiom;
        bool largerForIpad;
        double size;
    };
    for (const auto& c : {Case{DeviceIdiom::pad, true, 74}, Case{DeviceIdiom::pad, false, 72},
                          Case{DeviceIdiom::phone, true, 72}, Case{DeviceIdiom::phone, false, 72}}) {
        ScopedDeviceIdiom idiom(c.idiom);
        const auto f = font(QRVFont::display72Bold, c.largerForIpad);
        EXPECT_EQ(f.size, c.size);
        EXPECT_EQ(f.weight, FontWeight::bold);
        EXPECT_EQ(fontWithLineHeight(QRVFont::display72Bold, c.largerForIpad).font, f);
    }
    ScopedDeviceIdiom pad(DeviceIdiom::pad);
    // Label themes never grow: theme 0 is 48 pt bold in the primary text colour.
    EXPECT_EQ(themeFont(QRVLabelTheme::display48BoldPrimary), platform::Font::system(48, FontWeight::bold));
    EXPECT_EQ(themeTextColor(QRVLabelTheme::display48BoldPrimary).name, "neutralsPrimary");
}

TEST(QRVFont, LineHeightsAreRoomyForTextAndTighterForDisplaySizes) {
    const std::map<double, double> expected = {{10, 14}, {12, 18}, {14, 20}, {16, 24}, {18, 26}, {20, 28},
                                               {24, 30}, {28, 34}, {34, 42}, {48, 58}, {72, 88}};
    for (const auto& [size, lineHeight] : expected)
        EXPECT_EQ(lineHeightForPointSize(size), lineHeight) << size;
}

TEST(QRVLabelTheme, StylesAndColoursFollowTheThemeTables) {
    // Style by ranges of theme raw values.
    struct Range {
        int first, last, style;
    };
    const Range styles[] = {{0, 0, 4},    {1, 2, 5},    {3, 5, 7},    {6, 7, 8},    {8, 11, 9},
                            {12, 13, 10}, {14, 19, 12}, {20, 24, 14}, {25, 25, 16}, {26, 26, 11},
                            {27, 29, 16}, {30, 34, 10}, {35, 40, 21}, {41, 45, 23}, {46, 53, 1},
                            {54, 59, 18}, {60, 62, 1}};
    const std::map<std::string, std::vector<int>> colours = {
        {"neutralsPrimary", {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 14, 20, 25, 30, 35, 41, 46, 54, 60}},
        {"neutralsSecondary", {9, 18, 21, 22, 26, 27, 36, 42, 47, 55, 61}},
        {"brandPrimary", {10, 16, 24, 29, 31, 33, 38, 44, 57}},
        {"neutralsTertiary", {11, 19, 23, 28, 37, 43, 56, 62}},
        {"neutralsInverse", {13, 15, 40, 45, 48}},
        {"brandPrimaryTxt", {17, 34, 39, 59}},
        {"negative", {32, 53}},
        {"positive", {49}},
        {"carbTxt", {50}},
        {"fatTxt", {51}},
        {"proteinTxt", {52}},
        {"neutralsQuaternary", {58}},
    };
    std::map<int, int> styleOfTheme;
    for (const auto& r : styles) {
        for (int raw = r.first; raw <= r.last; ++raw) styleOfTheme[raw] = r.style;
    }
    std::map<int, std::string> colourOfTheme;
    for (const auto& [token, raws] : colours) {
        for (int raw : raws) EXPECT_TRUE(colourOfTheme.emplace(raw, token).second) << raw;
    }
    ASSERT_EQ(styleOfTheme.size(), 63u);
    ASSERT_EQ(colourOfTheme.size(), 63u);
    ASSERT_EQ(kAllQRVLabelThemes.size(), 63u);

    ScopedDeviceIdiom pad(DeviceIdiom::pad);
    for (int raw = 0; raw < 63; ++raw) {
        const auto theme = qrvLabelThemeFromRawValue(raw);
        ASSERT_TRUE(theme) << raw;
        EXPECT_EQ(rawValue(kAllQRVLabelThemes[static_cast<std::size_t>(raw)]), raw);
        EXPECT_EQ(rawValue(themeStyle(*theme)), styleOfTheme[raw]) << raw;
        EXPECT_EQ(themeFont(*theme), font(themeStyle(*theme), false)) << raw;
        EXPECT_EQ(themeTextColor(*theme).name, colourOfTheme[raw]) << raw;
    }
    EXPECT_FALSE(qrvLabelThemeFromRawValue(-1));
    EXPECT_FALSE(qrvLabelThemeFromRawValue(63));
}

TEST(TextWeight, StepsMapToPlatformWeightsWithTheTopTwoEqual) {
    using W = FontWeight;
    const W expected[] = {W::ultraLight, W::thin, W::light, W::regular, W::medium,
                          W::semibold,   W::bold, W::heavy, W::black,   W::black};
    for (int raw = 0; raw < 10; ++raw) {
        const auto weight = textWeightFromRawValue(raw);
        ASSERT_TRUE(weight) << raw;
        EXPECT_EQ(platformWeight(*weight), expected[raw]) << raw;
    }
    EXPECT_FALSE(textWeightFromRawValue(10));
    EXPECT_FALSE(textWeightFromRawValue(-1));
    const auto color = QRVColor::fatTxt();
    EXPECT_EQ(TextTheme::custom(15, TextWeight::_900, color).font(),
              TextTheme::custom(15, TextWeight::_950, color).font());
}

TEST(QRVTextTheme, ExplicitColourReplacesTheThemeColour) {
    const QRVTextTheme themed(QRVLabelTheme::footnote12RegularSecondary);
    EXPECT_EQ(themed.themeColor().name, "neutralsSecondary");
    EXPECT_EQ(themed.font(), platform::Font::system(12, FontWeight::regular));
    EXPECT_EQ(themed.style().lineHeight, 18);

    const QRVTextTheme recoloured(QRVLabelTheme::footnote12RegularSecondary, QRVColor::negative());
    EXPECT_EQ(recoloured.themeColor(), QRVColor::negative());
    EXPECT_EQ(recoloured.font(), themed.font());

    const QRVTextTheme custom(TextTheme::custom(22, TextWeight::_600, QRVColor::carbTxt()));
    EXPECT_EQ(custom.style(),
              (TextStyle{platform::Font::system(22, FontWeight::semibold), QRVColor::carbTxt(), 32}));
}

// The font and colour a text is finally drawn with.
platform::op::DrawText drawn(const platform::View& view) {
    const platform::FixedAdvanceTextMeasurer measurer;
    const auto list = platform::record(platform::layout(view, {.size = {300, 100}}, measurer));
    for (const auto& op : list.ops) {
        if (const auto* text = std::get_if<platform::op::DrawText>(&op)) return *text;
    }
    ADD_FAILURE() << "no text drawn";
    return {};
}

TEST(QRVTextTheme, AppliedThemeReachesTheDrawnText) {
    const auto text = drawn(QRVTextTheme(QRVLabelTheme::label12MediumCarb).apply(platform::Text("Carbs")));
    EXPECT_EQ(text.font, platform::Font::system(12, FontWeight::medium));
    EXPECT_EQ(text.color.name, "carbTxt");

    ScopedDeviceIdiom pad(DeviceIdiom::pad);
    EXPECT_EQ(drawn(font(platform::Text("72"), QRVFont::title24Bold, true)).font.size, 26);
}

TEST(QRVFontDeathTest, ValuesOutsideTheEnumerationStopTheProgram) {
    EXPECT_DEATH(font(static_cast<QRVFont>(26), false), "unexpected QRVFont raw value 26");
    EXPECT_DEATH(themeFont(static_cast<QRVLabelTheme>(63)), "unexpected QRVLabelTheme raw value 63");
}

}  // namespace
}  // namespace qrv::catalog
