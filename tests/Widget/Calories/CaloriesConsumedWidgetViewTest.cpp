// The calories widget's views: the deep link of each family, the action
// buttons, the log-in prompt, the circular gauge's arcs, the stat rows'
// identifiers and room for the largest figures.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "Widget/Calories/CaloriesConsumedWidgetView.hpp"
#include "Widget/Calories/WidgetStatView.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"
#include "tests/Widget/Calories/WidgetViewTestSupport.hpp"

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using namespace qrv::widget::testing;

CaloriesConsumedDataEntry entry(bool loggedIn = true, bool barcode = true) {
    auto e = CaloriesConsumedDataEntry::makeSample(Date{0});
    e.isLoggedIn = loggedIn;
    e.shouldShowBarcodeButton = barcode;
    return e;
}

DisplayList render(const CaloriesConsumedDataEntry& e, WidgetFamily family, Size size = {}) {
    ViewRender r{.size = size.width > 0 ? size : phoneSize(family), .family = family};
    const CaloriesConsumedWidgetView view{{e}, family};
    return r.record([&] { return view.body(); });
}

TEST(CaloriesConsumedWidgetView, EachFamilyLinksToItsOwnPage) {
    const std::pair<WidgetFamily, const char*> cases[] = {
        {WidgetFamily::systemSmall, "qrv://qrv/widgets/calories_small"},
        {WidgetFamily::systemMedium, "qrv://qrv/widgets/calories_medium"},
        {WidgetFamily::accessoryCircular, "qrv://qrv/widgets/calories_tiny_circular"},
        {WidgetFamily::accessoryRectangular, "qrv://qrv/widgets/calories_rectangular"},
        {WidgetFamily::accessoryInline, "qrv://qrv/widgets/calories_inline"},
        {WidgetFamily::systemLarge, "qrv://qrv/widgets/calories_small"},  // any other family
    };
    for (const auto& [family, url] : cases)
        for (bool loggedIn : {true, false})
            EXPECT_EQ(render(entry(loggedIn), family).widgetURL, url)
                << name(family) << " loggedIn=" << loggedIn;
}

TEST(CaloriesConsumedWidgetView, HomeScreenOffersSearchAndBarcodeOnlyWhenAsked) {
    const std::set<std::string> both{CaloriesConsumedWidgetView::kFoodSearchLink,
                                     CaloriesConsumedWidgetView::kBarcodeLink};
    const std::set<std::string> searchOnly{CaloriesConsumedWidgetView::kFoodSearchLink};
    for (auto family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium}) {
        EXPECT_EQ(linkURLs(render(entry(true, true), family)), both) << name(family);
        EXPECT_EQ(linkURLs(render(entry(true, false), family)), searchOnly) << name(family);
        // Logged out there is nothing to search for yet.
        EXPECT_TRUE(linkURLs(render(entry(false, true), family)).empty()) << name(family);
    }
    for (auto family :
         {WidgetFamily::accessoryCircular, WidgetFamily::accessoryRectangular, WidgetFamily::accessoryInline})
        EXPECT_TRUE(render(entry(), family).hitRegions.empty()) << name(family);
}

TEST(CaloriesConsumedWidgetView, LoggedOutShowsThePromptInEveryFamilyAndNoFigures) {
    const std::string prompt = localizedString("dashb.widget.login.long", "Log in to view data.");
    for (auto family : kContentFamilies) {
        SCOPED_TRACE(name(family));
        const auto list = render(entry(false), family);
        const std::string all = allTexts(list);
        EXPECT_NE(all.find(prompt), std::string::npos) << all;
        for (const char* figure : {"1,250", "1,500", "500", "250", "Remaining"})
            EXPECT_EQ(all.find(figure), std::string::npos) << "shows " << figure;
        expectNothingClipped(list);
    }
}

// The gauge's arcs in drawing order: the share of a turn each covers, and its start in degrees.
std::vector<std::pair<double, double>> gaugeArcs(const DisplayList& list) {
    std::vector<std::pair<double, double>> out;
    for (const auto& o : list.ops)
        if (const auto* s = std::get_if<op::StrokePath>(&o))
            for (const auto& el : s->path.elements())
                if (const auto* arc = std::get_if<PathArc>(&el))
                    out.emplace_back(std::abs(arc->sweep) / (2 * std::numbers::pi),
                                     std::fmod(arc->startAngle * 180 / std::numbers::pi + 360, 360));
    return out;
}

TEST(CaloriesConsumedWidgetView, CircularGaugeDrawsItsShareOfTheOpenArc) {
    // The track is 0.67 of a turn from 150° past three o'clock, so the opening
    // is centred at the bottom; the progress covers its share of the track.
    const struct {
        double progress;
        std::vector<double> fractions;  // track, then progress
    } cases[] = {{0.5, {0.67, 0.335}},
                 {0.25, {0.67, 0.1675}},
                 {1.0, {0.67, 0.67}},
                 {1.2, {0.67, 0.67}},
                 {std::numeric_limits<double>::quiet_NaN(), {0.67, 0.67}},
                 {0, {0.67}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.progress);
        auto e = entry();
        e.progress = c.progress;
        const auto arcs = gaugeArcs(render(e, WidgetFamily::accessoryCircular));
        ASSERT_EQ(arcs.size(), c.fractions.size());
        for (std::size_t i = 0; i < arcs.size(); ++i) {
            EXPECT_NEAR(arcs[i].first, c.fractions[i], 1e-9);
            EXPECT_NEAR(arcs[i].second, 150, 1e-6);
        }
    }
}

TEST(CaloriesConsumedWidgetView, StatFiguresCarryIdentifiersFromTheirTitles) {
    const auto list = render(entry(), WidgetFamily::systemMedium);
    std::map<std::string, std::string> labels;
    for (const auto& element : list.accessibility) labels[element.identifier] = element.label;
    EXPECT_EQ(labels["EnergyStatsView_BaseGoal_value"], "1,500");
    EXPECT_EQ(labels["EnergyStatsView_Food_value"], "500");
    EXPECT_EQ(labels["EnergyStatsView_Exercise_value"], "250");
    std::vector<std::string> icons;
    for (const auto& o : list.ops)
        if (const auto* image = std::get_if<op::DrawImage>(&o)) icons.push_back(image->name);
    EXPECT_EQ(icons, (std::vector<std::string>{"Search", "Barcode", "Base Goal", "Food", "Calories"}));
    // The small widget has no room for the rows.
    for (const auto& element : render(entry(), WidgetFamily::systemSmall).accessibility)
        EXPECT_EQ(element.identifier.find("_value"), std::string::npos) << element.identifier;

    EXPECT_EQ(WidgetStatView::valueAccessibilityIdentifier(" Base\tGoal \n"),
              "EnergyStatsView_BaseGoal_value");
    // No-break and narrow no-break spaces of localized titles go too.
    EXPECT_EQ(WidgetStatView::valueAccessibilityIdentifier("Objectif\u00A0de\u202Fbase"),
              "EnergyStatsView_Objectifdebase_value");
    EXPECT_EQ(WidgetStatView::valueAccessibilityIdentifier("Ziel\u00FC"), "EnergyStatsView_Ziel\u00FC_value");
}

TEST(CaloriesConsumedWidgetView, LargestFiguresFitEveryFamilyOnPhoneAndTablet) {
    auto e = entry();
    e.goal = e.consumed = e.exercise = e.remaining = "12,345";
    e.progress = 1.4;
    onPhoneAndTablet(kContentFamilies, [&](WidgetFamily family, Size size) {
        const auto list = render(e, family, size);
        expectNothingClipped(list);
        EXPECT_TRUE(showsTextContaining(list, "12,345"));
    });
}

TEST(CaloriesConsumedWidgetView, HomeScreenRingTitleGrowsOnTheTablet) {
    auto titleSize = [](catalog::DeviceIdiom idiom) {
        catalog::ScopedDeviceIdiom scoped(idiom);
        for (const auto& t : render(entry(), WidgetFamily::systemMedium).texts)
            if (t.accessibilityIdentifier == "EnergyStatsView_progressViewTitle") return t.fontSize;
        return 0.0;
    };
    // 24 pt on the phone; on the tablet 26 pt before the ring's text shrinks to fit.
    EXPECT_DOUBLE_EQ(titleSize(catalog::DeviceIdiom::phone), 24);
    EXPECT_GT(titleSize(catalog::DeviceIdiom::pad), 24);
}

}  // namespace
}  // namespace qrv::widget
