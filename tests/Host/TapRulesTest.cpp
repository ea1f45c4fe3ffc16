// Where a tap on a widget goes, by family and system version.
#include <gtest/gtest.h>

#include "Host/TapRules.hpp"

using namespace qrv::host;
using qrv::platform::DisplayList;
using qrv::platform::IntentInvocation;
using qrv::platform::LinkTarget;
using qrv::platform::WidgetFamily;

namespace {

const IntentInvocation kLogWater{"WaterWidgetIntent", {"ml", "250"}};

// A widget with a link on its left half, a button in its right half's top
// corner and a widget URL.
DisplayList widgetWithLinkAndButton() {
    DisplayList list;
    list.size = {200, 100};
    list.widgetURL = "qrv://qrv/widgets/whole";
    list.hitRegions.push_back({{{0, 0}, {100, 100}}, LinkTarget{"qrv://qrv/widgets/link"}});
    list.hitRegions.push_back({{{150, 0}, {50, 50}}, kLogWater});
    return list;
}

}  // namespace

TEST(TapRulesTest, OutcomeOfATapByFamilyVersionAndPlace) {
    const TapOutcome whole = OpenURL{"qrv://qrv/widgets/whole"};
    const TapOutcome link = OpenURL{"qrv://qrv/widgets/link"};
    const TapOutcome run = RunIntent{kLogWater};
    struct Row {
        WidgetFamily family;
        int version;
        qrv::platform::Point point;
        TapOutcome expected;
    };
    const Row rows[] = {
        // Small: one target; the link is not one, the button is.
        {WidgetFamily::systemSmall, 17, {10, 10}, whole},
        {WidgetFamily::systemSmall, 17, {160, 10}, run},
        {WidgetFamily::systemSmall, 17, {160, 80}, whole},
        // Medium: links and the widget URL elsewhere.
        {WidgetFamily::systemMedium, 17, {10, 10}, link},
        {WidgetFamily::systemMedium, 17, {120, 80}, whole},
        {WidgetFamily::systemMedium, 17, {160, 10}, run},
        // Before 17 a button does nothing, links still work.
        {WidgetFamily::systemMedium, 16, {160, 10}, NoAction{}},
        {WidgetFamily::systemMedium, 16, {10, 10}, link},
        // Lock screen: one target, buttons only where controls fit.
        {WidgetFamily::accessoryRectangular, 17, {10, 10}, whole},
        {WidgetFamily::accessoryRectangular, 17, {160, 10}, run},
        {WidgetFamily::accessoryInline, 17, {160, 10}, whole},
        {WidgetFamily::accessoryCircular, 16, {10, 10}, whole},
    };
    const auto list = widgetWithLinkAndButton();
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(qrv::platform::name(row.family)) + " " + std::to_string(row.version) + " at " +
                     std::to_string(row.point.x) + "," + std::to_string(row.point.y));
        EXPECT_EQ((TapRules{row.family, row.version}.tap(list, row.point)), row.expected);
    }
}

TEST(TapRulesTest, WithoutAnyURLTheAppJustLaunches) {
    DisplayList list;
    list.size = {100, 100};
    EXPECT_EQ((TapRules{WidgetFamily::systemMedium, 17}.tap(list, {5, 5})), TapOutcome(LaunchApp{}));
}

TEST(TapRulesTest, ReachableTargetsAreThoseATapCanReach) {
    const auto list = widgetWithLinkAndButton();
    const auto small = reachableTargets(list, {WidgetFamily::systemSmall, 17});
    EXPECT_EQ(small.widgetURL, "qrv://qrv/widgets/whole");
    EXPECT_TRUE(small.links.empty());
    ASSERT_EQ(small.buttons.size(), 1u);
    EXPECT_EQ(small.buttons[0].intent, kLogWater);

    const auto medium = reachableTargets(list, {WidgetFamily::systemMedium, 16});
    ASSERT_EQ(medium.links.size(), 1u);
    EXPECT_EQ(medium.links[0].url, "qrv://qrv/widgets/link");
    EXPECT_TRUE(medium.buttons.empty());

    const auto inlineFamily = reachableTargets(list, {WidgetFamily::accessoryInline, 18});
    EXPECT_TRUE(inlineFamily.links.empty());
    EXPECT_TRUE(inlineFamily.buttons.empty());
}
