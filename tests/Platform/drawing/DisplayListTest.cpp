// Recording: golden dumps of small trees (QRV_UPDATE_GOLDEN=1 rewrites them),
// and the parts of a display list that are not drawing: taps, texts,
// accessibility identifiers.
#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Recorder.hpp"
#include "tests/Platform/drawing/GoldenSupport.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace qrv::platform {
namespace {

const Color kInk{{0.1, 0.1, 0.1, 1}, {0.9, 0.9, 0.9, 1}, "ink"};
const Color kBrand = Color::fixed({0.2, 0.4, 0.8, 1}, "brand");
const Color kTrack = Color::fixed({0.85, 0.85, 0.85, 1}, "track");
const Color kStripe = Color::fixed({1, 0.5, 0, 1}, "stripe");

DisplayList recorded(const View& view, Size size, ColorScheme scheme = ColorScheme::light) {
    static const FixedAdvanceTextMeasurer measurer;
    RenderOptions options;
    options.size = size;
    options.colorScheme = scheme;
    return render(view.font(Font::system(10)), options, measurer);
}

void expectGolden(const std::string& name, const DisplayList& list) {
    testing::expectGolden("drawing", name, list);
}

// A ring in the manner of the progress views: a track, a trimmed arc turned
// to start at twelve o'clock with a rounded end, and a centred title.
View ring(double progress) {
    StrokeStyle flat{.lineWidth = 8};
    StrokeStyle round{.lineWidth = 8, .lineCap = LineCap::round};
    return ZStack({
        Circle().stroke(kTrack, flat),
        Circle().trim(0, progress).rotation(Angle::degrees(-90)).stroke(kBrand, flat),
        Circle().trim(progress / 2, progress).rotation(Angle::degrees(-90)).stroke(kBrand, round),
        VStack({Text("1,234").accessibilityIdentifier("ringTitle"), Text("left")}, HorizontalAlignment::center, 0)
            .minimumScaleFactor(0.5),
    });
}

TEST(DisplayList, GoldenRingCard) {
    View card = HStack({ring(0.3).frame(60, 60),
                        VStack({Text("Calories").foregroundColor(kInk),
                                Link("qrv://qrv/widgets/food_search", Image("Search").resizable().renderingMode(
                                                                           ImageRenderingMode::template_))
                                    .frame(16, 16),
                                Divider()},
                               HorizontalAlignment::leading, 4)})
                    .padding(8)
                    .background(Color::white())
                    .widgetURL("qrv://qrv/widgets/calories_small");
    expectGolden("ring_card", recorded(card, {140, 80}));
}

TEST(DisplayList, GoldenMasksGroupsAndTransforms) {
    // Stripes clipped to a round-capped arc (a clip, no group); a translucent
    // mask needs a group; a mirrored arc; a faded button; a dark subtree.
    View stripes = ZStack({Rectangle().fill(kTrack),
                           PathShape([](const Rect& r) {
                               return Path().moveTo({r.minX(), r.maxY()}).lineTo({r.maxX(), r.minY()});
                           }).stroke(kStripe, 2)});
    View maskedByStroke =
        stripes.mask(Circle().trim(0, 0.25).stroke(Color::black(), StrokeStyle{.lineWidth = 6, .lineCap = LineCap::round}));
    View maskedByTranslucent = Rectangle().fill(kBrand).mask(Circle().fill(Color::black().opacity(0.5)));
    View mirrored = Circle().trim(0, 0.2).stroke(kBrand, 4).scaleEffect(1, -1).rotationEffect(Angle::degrees(-90));
    View button = Button({"WaterWidgetIntent", {"oz", "8"}}, Text("+ 8 oz"))
                      .buttonStyle(ButtonStyle::borderedProminent)
                      .tint(kBrand)
                      .opacity(0.5);
    View dark = Rectangle().fill(kInk).frame(10, 10).colorScheme(ColorScheme::dark);
    View rounded = Rectangle().fill(kStripe).frame(16, 12).offset(2, -3).cornerRadius(4);
    View all = VStack({HStack({maskedByStroke.frame(30, 30), maskedByTranslucent.frame(20, 20), mirrored.frame(30, 30)}),
                       HStack({button, dark, rounded})});
    expectGolden("masks_groups_transforms", recorded(all, {140, 90}));
}

TEST(DisplayList, TapsTextsAndIdentifiersHaveScreenRectangles) {
    View v = VStack({Link("qrv://a", Text("tap me")).accessibilityIdentifier("link"),
                     Button({"Log", {"ml", "250"}}, Text("add")).rotationEffect(Angle::degrees(90)),
                     Text("a long title here").lineLimit(1).frame(30, 12).accessibilityIdentifier("title")},
                    HorizontalAlignment::leading, 0)
                 .widgetURL("qrv://first")
                 .widgetURL("qrv://outer");
    DisplayList list = recorded(v, {100, 60});

    // 100x60 widget, a 36-wide, 36-high stack centred: it starts at (32, 12).
    ASSERT_EQ(list.hitRegions.size(), 2U);
    EXPECT_EQ(list.hitRegions[0].rect, (Rect{{32, 12}, {36, 12}}));
    EXPECT_EQ(std::get<LinkTarget>(list.hitRegions[0].target).url, "qrv://a");
    // The button's 18x12 frame, turned a quarter about its centre (41, 30).
    const Rect turned = list.hitRegions[1].rect;
    EXPECT_NEAR(turned.minX(), 35, 1e-9);
    EXPECT_NEAR(turned.minY(), 21, 1e-9);
    EXPECT_NEAR(turned.width(), 12, 1e-9);
    EXPECT_NEAR(turned.height(), 18, 1e-9);
    EXPECT_EQ(std::get<IntentInvocation>(list.hitRegions[1].target), (IntentInvocation{"Log", {"ml", "250"}}));
    // The widget URL nearest the content is drawn last, so it wins.
    EXPECT_EQ(list.widgetURL, "qrv://first");
    EXPECT_EQ(std::get<LinkTarget>(*list.targetAt({33, 13})).url, "qrv://a");
    EXPECT_EQ(std::get<LinkTarget>(*list.targetAt({1, 1})).url, "qrv://first");

    ASSERT_EQ(list.texts.size(), 3U);
    EXPECT_EQ(list.texts[0].accessibilityIdentifier, "link");
    EXPECT_EQ(list.texts[1].text, "add");
    EXPECT_EQ(list.texts[1].accessibilityIdentifier, "");
    EXPECT_EQ(list.texts[2].shown, "a lo…");
    EXPECT_TRUE(list.texts[2].truncated);
    EXPECT_EQ(list.texts[2].rect, (Rect{{32, 36}, {30, 12}}));
    ASSERT_EQ(list.accessibility.size(), 2U);
    EXPECT_EQ(list.accessibility[0], (AccessibilityElement{"link", {{32, 12}, {36, 12}}, "tap me"}));
    EXPECT_EQ(list.accessibility[1].identifier, "title");
    EXPECT_EQ(list.accessibility[1].label, "a long title here");
}

TEST(DisplayList, DegenerateInputRecordsNothingHarmful) {
    // Zero scale, zero opacity, zero-width strokes and empty trims draw nothing;
    // none of them reaches the painter as a singular matrix or an empty path.
    View v = ZStack({Text("gone").scaleEffect(0), Text("hidden").opacity(0), Circle().stroke(kBrand, 0),
                     Circle().trim(0.5, 0.5).stroke(kBrand, 2), Rectangle().fill(kBrand).frame(-5, -5)});
    DisplayList list = recorded(v, {50, 50});
    EXPECT_TRUE(list.ops.empty()) << toText(list);
    EXPECT_TRUE(list.texts.empty());

    // Values that are not numbers (a progress of 0/0, say) are normalised
    // where they enter, so no op carries one.
    const double nan = std::nan("");
    View odd = VStack({Circle().trim(0, nan).stroke(kBrand, 2), Circle().trim(nan, 0.5).stroke(kBrand, 2),
                       Text("x").opacity(nan).rotationEffect(Angle{nan}),
                       Rectangle().fill(kBrand).frame(nan, 10).padding(nan),
                       Text("y").minimumScaleFactor(nan).scaleEffect(nan), Spacer(nan)})
                   .frame(FlexibleFrame{.maxWidth = nan});
    const std::string dump = toText(recorded(odd, {50, 200}));
    EXPECT_EQ(dump.find("nan"), std::string::npos) << dump;
    EXPECT_NE(dump.find("sweep 180.00deg"), std::string::npos) << dump;
}

}  // namespace
}  // namespace qrv::platform
