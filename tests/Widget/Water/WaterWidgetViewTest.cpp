// The water widget's views: deep links by size, the log button's intent and
// caption, the glass's two-pass layout (marks measured, water height from the
// model, column drawn that high), the logged-out view and room for long totals.
#include <gtest/gtest.h>

#include "Platform/locale/Locale.hpp"
#include "Widget/Water/WaterLevelWidgetView.hpp"
#include "Widget/Water/WaterWidgetView.hpp"
#include "tests/Widget/Calories/WidgetViewTestSupport.hpp"

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using namespace qrv::widget::testing;

struct Rendered {
    DisplayList list;
    ViewRender render;
    std::shared_ptr<WaterWidgetViewModel> model;
};

Rendered render(WaterDataEntry entry, WidgetFamily family, Size size = {},
                ColorScheme scheme = ColorScheme::light) {
    Rendered out;
    out.model = std::make_shared<WaterWidgetViewModel>(entry);
    const WaterWidgetView view{scheme, family, out.model};
    out.render = ViewRender{.size = size.width > 0 ? size : phoneSize(family),
                            .family = family,
                            .scheme = scheme,
                            .afterLayout = [view](const Preferences& p) { return view.afterLayout(p); }};
    out.list = out.render.record([view] { return view.body(); });
    return out;
}

WaterDataEntry entry(float amount, WaterWidgetUnit unit, bool loggedIn = true) {
    return WaterDataEntry{Date{0}, loggedIn, amount, unit};
}

const std::pair<WidgetFamily, const char*> kPages[] = {
    {WidgetFamily::systemSmall, "qrv://qrv/widgets/water_small"},
    {WidgetFamily::systemMedium, "qrv://qrv/widgets/water_medium"},
};

TEST(WaterWidgetView, ButtonLogsOneIncrementOfTheUnitAndTheRestOpensTheSizesPage) {
    const struct {
        WaterWidgetUnit unit;
        std::vector<std::string> parameters;
    } cases[] = {{WaterWidgetUnit::oz, {"oz", "8"}},
                 {WaterWidgetUnit::ml, {"ml", "250"}},
                 {WaterWidgetUnit::cups, {"cups", "2"}}};
    for (const auto& c : cases)
        for (const auto& [family, url] : kPages) {
            SCOPED_TRACE(::testing::Message() << name(family) << " " << c.parameters[0]);
            const auto r = render(entry(3, c.unit), family);
            EXPECT_EQ(r.list.widgetURL, url);
            EXPECT_EQ(std::get<LinkTarget>(r.list.targetAt({1, 1}).value()).url, url);
            // The button lies on top (last); the medium widget has the clear link under it.
            ASSERT_EQ(r.list.hitRegions.size(), family == WidgetFamily::systemMedium ? 2u : 1u);
            const Rect button = r.list.hitRegions.back().rect;
            EXPECT_EQ(std::get<IntentInvocation>(r.list.targetAt(button.center()).value()),
                      (IntentInvocation{"WaterWidgetIntent", c.parameters}));
            // The caption is the model's, drawn on a brand-tinted fill.
            EXPECT_TRUE(std::ranges::any_of(r.list.texts, [&](const DrawnText& t) {
                return t.shown == r.model->buttonText() && button.contains(t.rect.center());
            }));
            EXPECT_TRUE(std::ranges::any_of(r.list.ops, [&](const DrawOp& o) {
                const auto* f = std::get_if<op::FillPath>(&o);
                return f && f->color.name == "brandPrimary" && f->path.bounds() == button;
            }));
        }
}

// The glass's frame and its marks' frames, as the last layout reported them.
struct Glass {
    Rect frame{};
    std::map<std::int64_t, Rect> marks;
};
Glass glassOf(const Preferences& preferences, const WaterLevelWidgetViewModel& model) {
    Glass g;
    for (const auto& [key, frame] : preferences) {
        if (key == HeightPreferenceKey::name) g.frame = frame;
        for (const auto& row : model.rows())
            if (key == YPositionPreferenceKey::name(row.value)) g.marks[row.value] = frame;
    }
    return g;
}

TEST(WaterWidgetView, GlassIsMeasuredThenFilledToTheModelsHeight) {
    // Amounts on a mark of their scale, and none; between marks is the model's rule.
    const struct {
        float amount;
        WaterWidgetUnit unit;
    } cases[] = {{24, WaterWidgetUnit::oz},
                 {1250, WaterWidgetUnit::ml},
                 {6, WaterWidgetUnit::cups},
                 {0, WaterWidgetUnit::oz}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.amount);
        const auto r = render(entry(c.amount, c.unit), WidgetFamily::systemMedium);
        const auto& level = *r.model->waterLevelViewModel();
        const Glass glass = glassOf(r.render.preferences, level);
        ASSERT_GT(glass.frame.height(), 0);
        ASSERT_EQ(glass.marks.size(), 7u);
        EXPECT_EQ(r.render.passes, c.amount > 0 ? 2 : 1);  // a second pass only when the water rose
        if (c.amount == 0) continue;
        // The surface is at the amount's mark, and the column drawn in the
        // brand colour rises that high from the glass's bottom.
        EXPECT_NEAR(glass.frame.maxY() - level.waterHeight(),
                    glass.marks.at(static_cast<std::int64_t>(c.amount)).midY(), 1e-9);
        std::optional<Rect> column;
        for (const auto& o : r.list.ops)
            if (auto* f = std::get_if<op::FillPath>(&o);
                f && f->color.name == "brandPrimary" && glass.frame.contains(f->path.bounds().center()))
                column = f->path.bounds();
        ASSERT_TRUE(column);
        EXPECT_NEAR(column->height(), level.waterHeight(), 1e-9);
        EXPECT_NEAR(column->maxY(), glass.frame.maxY(), 1e-9);
    }
}

TEST(WaterWidgetView, LongMarksSpanTheGlassAndAreLabelledAlikeInEveryLanguage) {
    for (const char* locale : {"en_US", "de_DE", "fr_FR"}) {
        SCOPED_TRACE(locale);
        platform::ScopedLocaleOverride scoped{platform::Locale(locale)};
        // The scale for 1250 ml runs from 1750 to 250; numbers are never grouped.
        const auto r = render(entry(1250, WaterWidgetUnit::ml), WidgetFamily::systemMedium);
        EXPECT_TRUE(showsText(r.list, "1250 ml"));
        const auto& level = *r.model->waterLevelViewModel();
        const Glass glass = glassOf(r.render.preferences, level);
        double previous = glass.frame.minY();
        for (const auto& row : level.rows()) {
            const Rect mark = glass.marks.at(row.value);
            EXPECT_DOUBLE_EQ(mark.height(), 1);
            EXPECT_DOUBLE_EQ(mark.width(), row.type == WaterLevelRowType::short_ ? 8 : glass.frame.width());
            EXPECT_NEAR(mark.midX(), glass.frame.midX(), 1e-9);
            EXPECT_GT(mark.midY(), previous);  // top row first
            previous = mark.midY();
        }
        // The marks are evenly spaced, and the bottom (0) is one step below the lowest.
        const double step = glass.marks.at(1000).midY() - glass.marks.at(1250).midY();
        EXPECT_NEAR(glass.frame.maxY() - glass.marks.at(250).midY(), step, 1e-9);
        // Long marks are labelled; the labels the water reached switch colour.
        std::map<std::string, std::string> labelColors;
        for (const auto& o : r.list.ops)
            if (auto* t = std::get_if<op::DrawText>(&o)) labelColors[t->text] = t->color.name;
        EXPECT_EQ(labelColors["1750"], "neutralsPrimary");
        EXPECT_EQ(labelColors["1250"], "brandPrimaryTxt");
        EXPECT_EQ(labelColors["750"], "brandPrimaryTxt");
        EXPECT_EQ(labelColors["250"], "brandPrimaryTxt");
        EXPECT_FALSE(labelColors.contains("1500"));
    }
}

TEST(WaterWidgetView, TotalIsWhiteInTheDarkOnly) {
    for (auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const auto r = render(entry(24, WaterWidgetUnit::oz), WidgetFamily::systemSmall, {}, scheme);
        std::string color;
        for (const auto& o : r.list.ops)
            if (auto* t = std::get_if<op::DrawText>(&o); t && t->text == r.model->waterRepresentation())
                color = t->color.name;
        EXPECT_EQ(color, scheme == ColorScheme::dark ? "neutralsWhite" : "neutralsPrimary");
        EXPECT_TRUE(r.render.preferences.empty()) << "the small widget has no glass to measure";
    }
}

TEST(WaterWidgetView, LoggedOutShowsTheMessageAndOnlyTheSizesPage) {
    for (const auto& [family, url] : kPages) {
        SCOPED_TRACE(name(family));
        const auto r = render(entry(24, WaterWidgetUnit::oz, false), family);
        EXPECT_EQ(r.list.widgetURL, url);
        EXPECT_TRUE(r.list.hitRegions.empty());
        EXPECT_TRUE(r.render.preferences.empty());
        ASSERT_EQ(r.list.texts.size(), 1u);
        EXPECT_EQ(r.list.texts[0].text, r.model->loggedOutMessage());
        expectNothingClipped(r.list);
    }
}

TEST(WaterWidgetView, LongTotalsFitOnPhoneAndTablet) {
    const WidgetFamily families[] = {WidgetFamily::systemSmall, WidgetFamily::systemMedium};
    onPhoneAndTablet(families, [](WidgetFamily family, Size size) {
        for (const auto& e : {entry(3250, WaterWidgetUnit::ml), entry(123.5, WaterWidgetUnit::oz),
                              entry(14.5, WaterWidgetUnit::cups), entry(99999, WaterWidgetUnit::ml)}) {
            const auto r = render(e, family, size);
            SCOPED_TRACE(r.model->waterRepresentation());
            expectNothingClipped(r.list);
            EXPECT_TRUE(showsText(r.list, r.model->waterRepresentation()));
        }
    });
}

}  // namespace
}  // namespace qrv::widget
