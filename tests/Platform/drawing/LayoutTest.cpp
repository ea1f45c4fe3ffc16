// Layout by proposals, checked as frame dumps with the fixed-advance measurer
// (font size 10: every character 6 wide, every line 12 high).
#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Layout.hpp"

#include <gtest/gtest.h>

namespace qrv::platform {
namespace {

const Color kRed = Color::fixed({1, 0, 0, 1}, "red");
const Color kBlue = Color::fixed({0, 0, 1, 1}, "blue");

LayoutTree lay(const View& view, Size size, EdgeInsets margins = {}) {
    static const FixedAdvanceTextMeasurer measurer;
    LayoutOptions options;
    options.size = size;
    options.environment.font = Font::system(10);
    options.contentMargins = margins;
    return layout(view, options, measurer);
}

struct Case {
    const char* name;
    View view;
    Size size;
    const char* expected;
};

TEST(Layout, FramesOfSmallTrees) {
    const Case cases[] = {
        {"spacer takes what the text and the fixed frame leave",
         HStack({Text("abc"), Spacer(), Rectangle().frame(20, 10)}), {100, 50},
         "HStack (0.00, 19.00, 100.00, 12.00)\n"
         "  Text \"abc\" (0.00, 19.00, 18.00, 12.00)\n"
         "  Spacer (18.00, 25.00, 62.00, 0.00)\n"
         "  Frame (80.00, 20.00, 20.00, 10.00)\n"
         "    Rectangle fill (80.00, 20.00, 20.00, 10.00)\n"},
        {"a text beside a spacer gets all it needs before the spacer grows",
         HStack({Text("abcdefghij"), Spacer(), Text("ab")}), {90, 12},
         "HStack (0.00, 0.00, 90.00, 12.00)\n"
         "  Text \"abcdefghij\" (0.00, 0.00, 60.00, 12.00)\n"
         "  Spacer (60.00, 6.00, 18.00, 0.00)\n"
         "  Text \"ab\" (78.00, 0.00, 12.00, 12.00)\n"},
        {"padding, spacing, leading alignment and an infinite maximum width",
         VStack({Text("Hi"), Text("World").frame(FlexibleFrame{.maxWidth = infinity, .alignment = Alignment::leading})},
                HorizontalAlignment::leading, 4)
             .padding(8),
         {100, 100},
         "Padding (0.00, 28.00, 100.00, 44.00)\n"
         "  VStack (8.00, 36.00, 84.00, 28.00)\n"
         "    Text \"Hi\" (8.00, 36.00, 12.00, 12.00)\n"
         "    Frame (8.00, 52.00, 84.00, 12.00)\n"
         "      Text \"World\" (8.00, 52.00, 30.00, 12.00)\n"},
        {"two infinitely wide frames split the width; a text keeps its own",
         HStack({Text("abcd"), View(kRed).frame(FlexibleFrame{.maxWidth = infinity}),
                 View(kBlue).frame(FlexibleFrame{.maxWidth = infinity})},
                VerticalAlignment::top, 0)
             .frame(std::nullopt, 20),
         {100, 20},
         "Frame (0.00, 0.00, 100.00, 20.00)\n"
         "  HStack (0.00, 0.00, 100.00, 20.00)\n"
         "    Text \"abcd\" (0.00, 0.00, 24.00, 12.00)\n"
         "    Frame (24.00, 0.00, 38.00, 20.00)\n"
         "      Color red (24.00, 0.00, 38.00, 20.00)\n"
         "    Frame (62.00, 0.00, 38.00, 20.00)\n"
         "      Color blue (62.00, 0.00, 38.00, 20.00)\n"},
        {"a fixed-size text keeps its ideal width; its neighbour wraps into what is left",
         HStack({Text("abcdefghij").fixedSize(), Text("abcdefghij")}, VerticalAlignment::center, 0), {70, 24},
         "HStack (2.00, 0.00, 66.00, 24.00)\n"
         "  FixedSize (2.00, 6.00, 60.00, 12.00)\n"
         "    Text \"abcdefghij\" (2.00, 6.00, 60.00, 12.00)\n"
         "  Text \"abcdefghij\" shows \"a|…\" (62.00, 0.00, 6.00, 24.00)\n"},
        {"geometry reader offers its whole size and places at the top-leading corner",
         GeometryReader([](Size s) { return View(Rectangle().frame(s.width / 2, s.height / 4)); }), {80, 40},
         "GeometryReader (0.00, 0.00, 80.00, 40.00)\n"
         "  Frame (0.00, 0.00, 40.00, 10.00)\n"
         "    Rectangle fill (0.00, 0.00, 40.00, 10.00)\n"},
        {"background and overlay take the view's size; a ZStack the largest child's",
         ZStack({Text("abc").padding(4).background(kRed), Circle().frame(10, 10).overlay(Text("x"), Alignment::topLeading)},
                Alignment::bottomTrailing),
         {60, 60},
         "ZStack (17.00, 20.00, 26.00, 20.00)\n"
         "  Background (17.00, 20.00, 26.00, 20.00)\n"
         "    Padding (17.00, 20.00, 26.00, 20.00)\n"
         "      Text \"abc\" (21.00, 24.00, 18.00, 12.00)\n"
         "    Color red (17.00, 20.00, 26.00, 20.00)\n"
         "  Overlay (33.00, 30.00, 10.00, 10.00)\n"
         "    Frame (33.00, 30.00, 10.00, 10.00)\n"
         "      Circle fill (33.00, 30.00, 10.00, 10.00)\n"
         "    Text \"x\" (33.00, 30.00, 6.00, 12.00)\n"},
        {"dividers run across a VStack and down an HStack (taking all the height offered)",
         VStack({HStack({Text("a"), Divider(), Text("b")}), Divider()}, HorizontalAlignment::center, 0)
             .frame(FlexibleFrame{.maxWidth = infinity}),
         {50, 40},
         "Frame (0.00, 0.00, 50.00, 40.00)\n"
         "  VStack (0.00, 0.00, 50.00, 40.00)\n"
         "    HStack (10.50, 0.00, 29.00, 39.00)\n"
         "      Text \"a\" (10.50, 13.50, 6.00, 12.00)\n"
         "      Divider (24.50, 0.00, 1.00, 39.00)\n"
         "      Text \"b\" (33.50, 13.50, 6.00, 12.00)\n"
         "    Divider (0.00, 39.00, 50.00, 1.00)\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(describe(lay(c.view, c.size)), c.expected);
    }
}

TEST(Layout, TextWrapsThenShrinksThenTruncates) {
    struct TextCase {
        const char* name;
        View view;
        double width;
        double scale;
        const char* shown;
        Size size;
    };
    const View ten = Text("abcdefghij").lineLimit(1).minimumScaleFactor(0.5);
    const TextCase cases[] = {
        {"fits", ten, 80, 1, "abcdefghij", {60, 12}},
        {"shrinks to what fits", ten, 45, 0.75, "abcdefghij", {45, 9}},
        {"shrinks to exactly the minimum", ten, 30, 0.5, "abcdefghij", {30, 6}},
        {"truncates at the minimum scale", ten, 20, 0.5, "abcde…", {18, 6}},
        {"without a scale factor it truncates at once", Text("abcdefghij").lineLimit(1), 45, 1, "abcdef…", {42, 12}},
        {"wraps at spaces when lines are free", Text("aa bb cc"), 30, 1, "aa bb|cc", {30, 24}},
        {"a word longer than a line breaks between characters", Text("abcdefgh"), 30, 1, "abcde|fgh", {30, 24}},
        {"the last allowed line carries the rest, cut", Text("aa bb cc dd ee").lineLimit(2), 30, 1, "aa bb|cc d…",
         {30, 24}},
        {"cuts fall between characters, not bytes", Text("ééééé").lineLimit(1), 20, 1, "éé…", {18, 12}},
        {"line breaks in the text start new lines", Text("a\nbb"), 30, 1, "a|bb", {12, 24}},
        {"lines beyond the limit end the last line with an ellipsis", Text("a\nbb\nc").lineLimit(2), 30, 1,
         "a|bb…", {18, 24}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        LayoutTree tree = lay(c.view.frame(c.width, 40, Alignment::topLeading), {100, 40});
        const LayoutNode& text = tree.content.children[0];
        ASSERT_TRUE(text.text.has_value());
        std::string shown;
        for (const auto& l : text.text->lines) shown += (shown.empty() ? "" : "|") + l.text;
        EXPECT_EQ(shown, c.shown);
        EXPECT_NEAR(text.text->scale, c.scale, 1e-9);
        EXPECT_NEAR(text.frame.width(), c.size.width, 1e-9);
        EXPECT_NEAR(text.frame.height(), c.size.height, 1e-9);
    }
}

TEST(Layout, ShrinkAlsoHonoursTheOfferedHeight) {
    // Two lines of 12 do not fit in 18; one line fits from 0.6 on, but at
    // 0.75 two lines of 9 do, and the larger scale wins.
    LayoutTree tree = lay(Text("aa bb").minimumScaleFactor(0.5).frame(18, 18, Alignment::topLeading), {100, 100});
    const auto& text = *tree.content.children[0].text;
    EXPECT_NEAR(text.scale, 0.75, 1e-3);
    EXPECT_EQ(text.lines.size(), 2U);
}

TEST(Layout, ContainerBackgroundAndMarginsAndSafeAreaColours) {
    // Content sits inside the margins; the container background and a colour
    // background touching the margins run to the widget's edges.
    View v = Text("abc").frame(FlexibleFrame{.maxWidth = infinity, .maxHeight = infinity}).background(kBlue)
                 .containerBackground(View(kRed));
    LayoutTree tree = lay(v, {100, 60}, EdgeInsets::all(10));
    ASSERT_EQ(tree.containerBackgrounds.size(), 1U);
    EXPECT_EQ(tree.containerBackgrounds[0].frame, (Rect{{0, 0}, {100, 60}}));
    const LayoutNode& layer = tree.content.children[0];
    EXPECT_EQ(layer.frame, (Rect{{10, 10}, {80, 40}}));
    EXPECT_EQ(layer.children[1].frame, (Rect{{0, 0}, {100, 60}}));
}

TEST(Layout, EnvironmentReachesReadersAndTexts) {
    View v = EnvironmentReader([](const Environment& env) {
                 return View(Text(std::string(name(env.widgetFamily))));
             })
                 .widgetFamily(WidgetFamily::accessoryInline)
                 .font(Font::system(20));
    LayoutTree tree = lay(v, {400, 40});
    EXPECT_EQ(describe(tree), "Text \"accessoryInline\" (110.00, 8.00, 180.00, 24.00)\n");
    EXPECT_EQ(findFrame(lay(Text("a").accessibilityIdentifier("id"), {20, 20}), "id"),
              (Rect{{7, 4}, {6, 12}}));
}

TEST(Layout, FramePreferencesReportWhereMarksEndedUp) {
    // Three marks spread by spacers down a 100-high column, like a glass's scale.
    auto mark = [] { return View(Divider().frame(8, 1).framePreference("mark")); };
    LayoutTree tree = lay(VStack({mark(), Spacer(), mark(), Spacer(), mark()}, HorizontalAlignment::center, 0)
                              .frame(FlexibleFrame{.maxHeight = infinity}),
                          {20, 101});
    const std::vector<Rect> expected{{{6, 0}, {8, 1}}, {{6, 50}, {8, 1}}, {{6, 100}, {8, 1}}};
    EXPECT_EQ(tree.preferenceFrames("mark"), expected);
    EXPECT_TRUE(tree.preferenceFrames("other").empty());
}

}  // namespace
}  // namespace qrv::platform
