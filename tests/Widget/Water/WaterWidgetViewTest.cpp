// The water widget's views: deep links by size, the log button's intent and
// caption, the glass's two-pass layout (marks measured, water height from the
// model, column drawn that high), the logged-out view and room for long totals.
#include <gtest/gtest.h>

#include "Platform/locale/Locale.hpp"
#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"
#include "Widget/Water/WaterLevelWidgetView.hpp"
#include "Widget/Water/WaterWidgetView.hpp"
#include "Widget/Water/WaterWidgetViewLogAction.hpp"
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

std::vector<IntentInvocation> intents(const DisplayList& list) {
    std::vector<IntentInvocation> out;
    for (const auto& region : list.hitRegions)
        if (auto* intent = std::get_if<IntentInvocation>(&region.target)) out.push_back(*intent);
    return out;
}

TEST(WaterWidgetView, EachSizeOpensItsOwnPageOffTheButton) {
    const std::pair<WidgetFamily, const char*> cases[] = {
        {WidgetFamily::systemSmall, "qrv://qrv/widgets/water_small"},
        {WidgetFamily::systemMedium, "qrv://qrv/widgets/water_medium"},
    };
    for (const auto& [family, url] : cases)
        for (bool loggedIn : {true, false}) {
            const auto r = render(entry(24, WaterWidgetUnit::oz, loggedIn), family);
            EXPECT_EQ(r.list.widgetURL, url) << name(family);
            const auto corner = r.list.targetAt({1, 1});
            ASSERT_TRUE(corner);
            EXPECT_EQ(std::get<LinkTarget>(*corner).url, url) << name(family);
        }
}

TEST(WaterWidgetView, ButtonLogsOneIncrementOfTheEntrysUnit) {
    const struct {
        WaterWidgetUnit unit;
        std::vector<std::string> parameters;
    } cases[] = {{WaterWidgetUnit::oz, {"oz", "8"}},
                 {WaterWidgetUnit::ml, {"ml", "250"}},
                 {WaterWidgetUnit::cups, {"cups", "2"}}};
    for (const auto& c : cases) {
        EXPECT_EQ(waterLogAction(c.unit), (WaterLogAction{"WaterWidgetIntent", c.parameters}));
        for (auto family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium}) {
            const auto r = render(entry(3, c.unit), family);
            // The button lies on top (last); the medium widget has the clear link under it.
            ASSERT_EQ(r.list.hitRegions.size(), family == WidgetFamily::systemMedium ? 2u : 1u)
                << name(family);
            const auto& button = r.list.hitRegions.back();
            EXPECT_EQ(std::get<IntentInvocation>(button.target),
                      (IntentInvocation{"WaterWidgetIntent", c.parameters}));
            const auto tapped = r.list.targetAt(button.rect.center());
            ASSERT_TRUE(tapped);
            EXPECT_TRUE(std::holds_alternative<IntentInvocation>(*tapped));
            // The caption is the model's, drawn white on a brand-tinted fill.
            bool caption = false;
            for (const auto& t : r.list.texts)
                caption =
                    caption || (t.shown == r.model->buttonText() && button.rect.contains(t.rect.center()));
            EXPECT_TRUE(caption) << r.model->buttonText();
            bool filled = false;
            for (const auto& o : r.list.ops)
                if (auto* f = std::get_if<op::FillPath>(&o))
                    filled = filled || (f->color.name == "brandPrimary" && f->path.bounds() == button.rect);
            EXPECT_TRUE(filled);
        }
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
    const struct {
        float amount;
        WaterWidgetUnit unit;
    } cases[] = {{24, WaterWidgetUnit::oz},  {4, WaterWidgetUnit::oz},   {3250, WaterWidgetUnit::ml},
                 {600, WaterWidgetUnit::ml}, {5, WaterWidgetUnit::cups}, {0, WaterWidgetUnit::oz}};
    for (const auto& c : cases) {
        const auto r = render(entry(c.amount, c.unit), WidgetFamily::systemMedium);
        const auto& level = *r.model->waterLevelViewModel();
        const Glass glass = glassOf(r.render.preferences, level);
        ASSERT_GT(glass.frame.height(), 0);
        ASSERT_EQ(glass.marks.size(), 7u);
        EXPECT_EQ(r.render.passes, c.amount > 0 ? 2 : 1)
            << c.amount;  // a second pass only when the water rose

        // The same measurements given to a fresh model give the same height.
        WaterLevelWidgetViewModel fresh(c.amount, c.unit);
        fresh.buildRows();
        fresh.setTotalHeight(glass.frame.height());
        for (const auto& [value, mark] : glass.marks)
            fresh.updateRowPosition(value, mark.midY() - glass.frame.minY());
        fresh.updateWaterHeight();
        EXPECT_DOUBLE_EQ(level.waterHeight(), fresh.waterHeight()) << c.amount;

        // On a mark, the surface is at the mark.
        if (const auto mark = glass.marks.find(static_cast<std::int64_t>(c.amount));
            mark != glass.marks.end()) {
            EXPECT_NEAR(glass.frame.maxY() - level.waterHeight(), mark->second.midY(), 1e-9);
        }

        // The column drawn: brand colour, from the glass's bottom, that high.
        std::optional<Rect> column;
        for (const auto& o : r.list.ops)
            if (auto* f = std::get_if<op::FillPath>(&o);
                f && f->color.name == "brandPrimary" && glass.frame.contains(f->path.bounds().center()))
                column = f->path.bounds();
        if (c.amount == 0) continue;
        ASSERT_TRUE(column) << c.amount;
        EXPECT_NEAR(column->height(), level.waterHeight(), 1e-9);
        EXPECT_NEAR(column->maxY(), glass.frame.maxY(), 1e-9);
    }
}

TEST(WaterWidgetView, LongMarksSpanTheGlassShortOnesAreTicks) {
    const auto r = render(entry(24, WaterWidgetUnit::oz), WidgetFamily::systemMedium);
    const auto& level = *r.model->waterLevelViewModel();
    const Glass glass = glassOf(r.render.preferences, level);
    double previous = glass.frame.minY();
    for (const auto& row : level.rows()) {
        const Rect mark = glass.marks.at(row.value);
        EXPECT_DOUBLE_EQ(mark.height(), 1);
        const double width = row.type == WaterLevelRowType::short_ ? 8 : glass.frame.width();
        EXPECT_DOUBLE_EQ(mark.width(), width);
        EXPECT_NEAR(mark.midX(), glass.frame.midX(), 1e-9);
        EXPECT_GT(mark.midY(), previous);  // top row first
        previous = mark.midY();
    }
    // The marks are evenly spaced, and the bottom (0) is one step below the lowest.
    const double step = glass.marks.at(16).midY() - glass.marks.at(24).midY();
    EXPECT_NEAR(glass.frame.maxY() - glass.marks.at(8).midY(), step, 1e-9);
    // Long marks are labelled; the labels the water reached switch colour.
    std::map<std::string, std::string> labelColors;
    for (const auto& o : r.list.ops)
        if (auto* t = std::get_if<op::DrawText>(&o)) labelColors[t->text] = t->color.name;
    EXPECT_EQ(labelColors["56"], "neutralsPrimary");
    EXPECT_EQ(labelColors["40"], "neutralsPrimary");
    EXPECT_EQ(labelColors["24"], "brandPrimaryTxt");
    EXPECT_EQ(labelColors["8"], "brandPrimaryTxt");
    EXPECT_FALSE(labelColors.contains("48"));
}

TEST(WaterWidgetView, GlassLabelsAndTotalSpellNumbersAlikeInEveryLanguage) {
    for (const char* locale : {"en_US", "de_DE", "fr_FR"}) {
        platform::ScopedLocaleOverride scoped{platform::Locale(locale)};
        const auto r = render(entry(1250, WaterWidgetUnit::ml), WidgetFamily::systemMedium);
        EXPECT_TRUE(showsText(r.list, "1250 ml")) << locale;
        std::size_t labels = 0;
        for (const auto& row : r.model->waterLevelViewModel()->rows())
            if (row.type == WaterLevelRowType::large) {
                ++labels;
                EXPECT_TRUE(showsText(r.list, std::to_string(row.value))) << locale << " " << row.value;
            }
        EXPECT_GT(labels, 0u);
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

TEST(WaterWidgetView, LoggedOutShowsTheMessageAndNothingToTap) {
    for (auto family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium}) {
        const auto r = render(entry(24, WaterWidgetUnit::oz, false), family);
        EXPECT_TRUE(intents(r.list).empty());
        EXPECT_TRUE(r.render.preferences.empty());
        ASSERT_EQ(r.list.texts.size(), 1u);
        EXPECT_EQ(r.list.texts[0].text, r.model->loggedOutMessage());
        expectNothingClipped(r.list, std::string(name(family)));
    }
}

TEST(WaterWidgetView, LongTotalsFitOnPhoneAndTablet) {
    for (auto idiom : {catalog::DeviceIdiom::phone, catalog::DeviceIdiom::pad}) {
        catalog::ScopedDeviceIdiom scoped(idiom);
        for (auto family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium})
            for (const auto& e : {entry(3250, WaterWidgetUnit::ml), entry(123.5, WaterWidgetUnit::oz),
                                  entry(14.5, WaterWidgetUnit::cups), entry(99999, WaterWidgetUnit::ml)}) {
                const Size size = idiom == catalog::DeviceIdiom::pad ? padSize(family) : phoneSize(family);
                const auto r = render(e, family, size);
                expectNothingClipped(r.list,
                                     std::string(name(family)) + " " + r.model->waterRepresentation());
                EXPECT_TRUE(showsText(r.list, r.model->waterRepresentation()));
            }
    }
}

}  // namespace
}  // namespace qrv::widget
