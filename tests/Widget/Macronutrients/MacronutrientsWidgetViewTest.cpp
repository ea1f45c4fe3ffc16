// The macronutrients widget's views: the log-in prompt and "--" in every
// family, the three gauges only when all three nutrients are there, their
// order and proportions, the over line, and room for four-digit grams.
#include <gtest/gtest.h>

#include <algorithm>

#include "Widget/Macronutrients/MacronutrientsWidgetValueView.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetView.hpp"
#include "tests/Widget/Calories/WidgetViewTestSupport.hpp"

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using namespace qrv::widget::testing;
using enum MacronutrientsDataValueType;

MacronutrientsDataEntry entry(bool loggedIn = true) {
    auto e = MacronutrientsDataEntry::makeSample(Date{0});
    e.isLoggedIn = loggedIn;
    return e;
}

DisplayList render(const MacronutrientsDataEntry& e, WidgetFamily family, Size size = {}) {
    ViewRender r{.size = size.width > 0 ? size : phoneSize(family), .family = family};
    const MacronutrientsWidgetView view{{e}, family};
    return r.record([&] { return view.body(); });
}

std::size_t ringTitles(const DisplayList& list) {
    return static_cast<std::size_t>(std::ranges::count_if(list.texts, [](const DrawnText& t) {
        return t.accessibilityIdentifier == "MacroStatsView_progressViewTitle";
    }));
}

TEST(MacronutrientsWidgetView, LoggedOutShowsThePromptInEveryFamilyAndDashesForFigures) {
    for (auto family : kContentFamilies) {
        SCOPED_TRACE(name(family));
        const auto list = render(entry(false), family);
        const std::string all = allTexts(list);
        EXPECT_NE(all.find("Log in to view data."), std::string::npos) << all;
        EXPECT_NE(all.find("--"), std::string::npos) << all;  // where figures would stand
        for (const char* figure : {"50", "165", "Carbs", "g left"})
            EXPECT_EQ(all.find(figure), std::string::npos) << "shows " << figure << ": " << all;
        expectNothingClipped(list);
        EXPECT_FALSE(list.widgetURL) << "the widget, not the view, sets the link";
    }
    EXPECT_EQ(std::ranges::count(shownTexts(render(entry(false), WidgetFamily::systemMedium)), "--"), 3);
}

TEST(MacronutrientsWidgetView, AMissingNutrientShowsNoGauges) {
    for (auto missing : {carbs, fat, protein}) {
        auto e = entry();
        e.values.erase(missing);
        const MacronutrientsWidgetView view{{e}, WidgetFamily::systemMedium};
        EXPECT_FALSE(view.values());
        const auto medium = render(e, WidgetFamily::systemMedium);
        EXPECT_EQ(ringTitles(medium), 0u);
        EXPECT_EQ(std::ranges::count(shownTexts(medium), "--"), 3);
        EXPECT_FALSE(showsTextContaining(render(e, WidgetFamily::accessoryRectangular), " / "));
        EXPECT_TRUE(showsText(render(e, WidgetFamily::accessoryInline), "--"));
    }
    EXPECT_EQ(ringTitles(render(entry(), WidgetFamily::systemMedium)), 3u);
}

TEST(MacronutrientsWidgetView, NutrientsRunCarbsFatProteinInEveryLayout) {
    auto positions = [](const DisplayList& list, bool horizontal) {
        std::vector<double> at;
        for (const char* title : {"Carbs", "Fat", "Protein"})
            for (const auto& t : list.texts)
                if (t.shown == title) at.push_back(horizontal ? t.rect.midX() : t.rect.midY());
        return at;
    };
    const auto medium = positions(render(entry(), WidgetFamily::systemMedium), true);
    ASSERT_EQ(medium.size(), 3u);
    EXPECT_TRUE(std::ranges::is_sorted(medium));
    for (auto family : {WidgetFamily::systemSmall, WidgetFamily::accessoryRectangular}) {
        const auto rows = positions(render(entry(), family), false);
        ASSERT_EQ(rows.size(), 3u) << name(family);
        EXPECT_TRUE(std::ranges::is_sorted(rows)) << name(family);
    }
    EXPECT_TRUE(
        showsText(render(entry(), WidgetFamily::accessoryInline), "Carbs 50g / Fat 35g / Protein 65g"));
    EXPECT_TRUE(showsText(render(entry(), WidgetFamily::accessoryRectangular), "50 / 165g"));
}

TEST(MacronutrientsWidgetView, GaugeIsSizedFromItsHeightBetweenNameAndLeftLine) {
    // In a view 166 high the ring is 0.45 × 166 across and its track 8 wide.
    const MacronutrientsWidgetValueView view{MacronutrientsWidgetValueViewModel{entry().values.at(carbs)}};
    ViewRender r{.size = {120, 166}, .family = WidgetFamily::systemMedium};
    const auto list = r.record([&] { return view.body(); });
    const auto track = std::ranges::find_if(list.ops, [](const DrawOp& o) {
        const auto* s = std::get_if<op::StrokePath>(&o);
        return s && s->color.name == "neutralsBackground";
    });
    ASSERT_NE(track, list.ops.end());
    const auto& stroke = std::get<op::StrokePath>(*track);
    const Rect ring = stroke.path.bounds();
    EXPECT_DOUBLE_EQ(stroke.style.lineWidth, 8);
    EXPECT_NEAR(ring.height(), 166 * 0.45, 1e-6);
    std::map<std::string, Rect> at;
    for (const auto& t : list.texts) at[t.shown] = t.rect;
    EXPECT_LT(at.at("Carbs").maxY(), ring.minY());
    EXPECT_TRUE(ring.contains(at.at("50").center()));
    EXPECT_GT(at.at("115 g left").minY(), ring.maxY());
}

TEST(MacronutrientsWidgetView, OverTheGoalReadsInBold) {
    auto e = entry();
    e.values[fat].value = 95.4;
    e.values[fat].maxValue = 80;
    std::map<std::string, FontWeight> weights;
    for (const auto& o : render(e, WidgetFamily::systemMedium).ops)
        if (auto* t = std::get_if<op::DrawText>(&o)) weights[t->text] = t->font.weight;
    EXPECT_EQ(weights.at("15 g over"), FontWeight::bold);
    EXPECT_EQ(weights.at("115 g left"), FontWeight::regular);
}

TEST(MacronutrientsWidgetView, FourDigitGramsFitEveryFamilyOnPhoneAndTablet) {
    auto e = entry();
    e.values[carbs].value = 1234;
    e.values[carbs].maxValue = 1500;
    e.values[fat].value = 1234.4;
    e.values[fat].maxValue = 999;
    e.values[protein].value = e.values[protein].maxValue = 9999;
    onPhoneAndTablet(kContentFamilies, [&](WidgetFamily family, Size size) {
        const auto list = render(e, family, size);
        expectNothingClipped(list);
        if (family != WidgetFamily::accessoryCircular) {
            EXPECT_TRUE(showsTextContaining(list, "1234") || showsTextContaining(list, "1,234"));
        }
    });
}

TEST(MacronutrientsWidgetView, CompactCountsAreWholeGrams) {
    EXPECT_EQ(MacronutrientsWidgetView::gramCount(50), "50");
    EXPECT_EQ(MacronutrientsWidgetView::gramCount(95.4), "95");
    EXPECT_EQ(MacronutrientsWidgetView::gramCount(2.5), "2");  // halves to even, as the rings round
    EXPECT_EQ(MacronutrientsWidgetView::gramCount(std::numeric_limits<double>::quiet_NaN()), "--");
    EXPECT_EQ(MacronutrientsWidgetView::gramCount(std::numeric_limits<double>::infinity()), "--");
}

}  // namespace
}  // namespace qrv::widget
