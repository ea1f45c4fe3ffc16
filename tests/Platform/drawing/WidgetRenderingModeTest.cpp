// The platform's rendering modes on a recorded widget: what each placement
// does to a known view's ops.
#include <gtest/gtest.h>

#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Recorder.hpp"
#include "Platform/drawing/WidgetRenderingMode.hpp"

namespace qrv::platform {
namespace {

const Color kBackground = Color::fixed({0.1, 0.3, 0.9, 1}, "background");
const Color kInk = Color::fixed({0.9, 0.2, 0.2, 0.5}, "ink");  // the default group, half transparent
const Color kArc = Color::fixed({0.2, 0.8, 0.3, 1}, "arc");    // the accent group
const Color kDim = Color::fixed({0.3, 0.3, 0.3, 1}, "dim");    // darker than the arc
const Rgba kTint{0.9, 0.5, 0.1, 1};

// Ops by colour name, in the order drawn: the background, the ink text, the
// accented arc, the dim bar.
std::vector<Rgba> drawnColors(const DisplayList& list) {
    std::vector<Rgba> out;
    for (const auto& o : list.ops) {
        if (auto* f = std::get_if<op::FillPath>(&o)) out.push_back(f->color.light);
        if (auto* s = std::get_if<op::StrokePath>(&o)) out.push_back(s->color.light);
        if (auto* t = std::get_if<op::DrawText>(&o)) out.push_back(t->color.light);
    }
    return out;
}

TEST(WidgetRenderingMode, EachPlacementRecoloursTheRecordedOps) {
    const View view = HStack({Text("ab").foregroundColor(kInk), Circle().stroke(kArc, 4).widgetAccentable(),
                              Rectangle().fill(kDim)})
                          .removableBackground(kBackground);
    struct Row {
        const char* placement;
        WidgetRenderingMode mode;
        bool showsBackground, lowLight;
    };
    const Row rows[] = {
        {"home screen", WidgetRenderingMode::fullColor, true, false},
        {"StandBy", WidgetRenderingMode::fullColor, false, false},
        {"tinted home screen", WidgetRenderingMode::accented, true, false},
        {"lock screen", WidgetRenderingMode::vibrant, false, false},
        {"StandBy at night", WidgetRenderingMode::vibrant, false, true},
    };
    static const FixedAdvanceTextMeasurer measurer;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.placement);
        RenderOptions options;
        options.size = {60, 20};
        options.renderingMode = row.mode;
        options.showsContainerBackground = row.showsBackground;
        const auto list = applyRenderingMode(render(view.font(Font::system(10)), options, measurer),
                                             RenderingModeStyle{row.mode, kTint, row.lowLight});
        auto colors = drawnColors(list);
        ASSERT_EQ(colors.size(), row.showsBackground ? 4U : 3U);
        if (row.showsBackground) colors.erase(colors.begin());
        const Rgba ink = colors[0], arc = colors[1], dim = colors[2];
        // Every mode keeps each op's alpha where it decides colour alone.
        switch (row.mode) {
            case WidgetRenderingMode::fullColor:
                EXPECT_EQ(ink, kInk.light);
                EXPECT_EQ(arc, kArc.light);
                break;
            case WidgetRenderingMode::accented:
                EXPECT_EQ(arc, kTint);                   // the accent group takes the tint
                EXPECT_EQ(ink.alpha, kInk.light.alpha);  // the default group keeps its alpha
                EXPECT_EQ((Rgba{ink.red, ink.green, ink.blue, 1}), (Rgba{dim.red, dim.green, dim.blue, 1}));
                EXPECT_NE(ink, (Rgba{kTint.red, kTint.green, kTint.blue, ink.alpha}));
                break;
            case WidgetRenderingMode::vibrant:
                for (const auto& c : {ink, arc, dim}) {
                    if (row.lowLight) {
                        EXPECT_GT(c.red, 2 * c.green);  // red in the dark
                    } else {
                        EXPECT_EQ(c.red, c.green);  // desaturated
                        EXPECT_EQ(c.green, c.blue);
                    }
                }
                EXPECT_GT(arc.alpha, dim.alpha);  // the brighter shows more strongly
                EXPECT_LT(ink.alpha, arc.alpha);  // and transparency still counts
                break;
        }
    }
}

}  // namespace
}  // namespace qrv::platform
