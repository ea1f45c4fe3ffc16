#include <gtest/gtest.h>

#include <map>

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

// The two heaviest steps draw alike: the platform has no weight above black.
TEST(TextWeight, TheTopTwoStepsAreBothBlack) {
    const auto color = QRVColor::fatTxt();
    EXPECT_EQ(TextTheme::custom(15, TextWeight::_900, color).font(),
              TextTheme::custom(15, TextWeight::_950, color).font());
    EXPECT_EQ(TextTheme::custom(15, TextWeight::_900, color).font().weight, FontWeight::black);
}

TEST(QRVTextTheme, ExplicitColourReplacesTheThemeColour) {
    const QRVTextTheme themed(QRVLabelTheme::footnote12RegularSecondary);
    EXPECT_EQ(themed.themeColor().name, "neutralsSecondary");

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
