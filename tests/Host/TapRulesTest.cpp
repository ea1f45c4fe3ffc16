// Where a tap on a widget goes, by family and system version, and which
// targets the gallery lists as reachable.
#include <gtest/gtest.h>

#include "Host/TapRules.hpp"

using namespace qrv::host;
using qrv::platform::DisplayList;
using qrv::platform::IntentInvocation;
using qrv::platform::LinkTarget;
using qrv::platform::WidgetFamily;

TEST(TapRulesTest, OutcomeOfATapAndReachableTargetsByFamilyAndVersion) {
    // A widget with a link on its left half, a button in its right half's top
    // corner and a widget URL.
    const IntentInvocation logWater{"WaterWidgetIntent", {"ml", "250"}};
    DisplayList list;
    list.size = {200, 100};
    list.widgetURL = "qrv://qrv/widgets/whole";
    list.hitRegions.push_back({{{0, 0}, {100, 100}}, LinkTarget{"qrv://qrv/widgets/link"}});
    list.hitRegions.push_back({{{150, 0}, {50, 50}}, logWater});

    const TapOutcome whole = OpenURL{"qrv://qrv/widgets/whole"}, link = OpenURL{"qrv://qrv/widgets/link"};
    const TapOutcome run = RunIntent{logWater}, nothing = NoAction{};
    const struct {
        WidgetFamily family;
        int version;
        TapOutcome onLink, onButton;
        std::size_t links, buttons;  // reachable
    } rows[] = {
        // Small and lock screen: one target; the link is not one, the button is.
        {WidgetFamily::systemSmall, 17, whole, run, 0, 1},
        {WidgetFamily::accessoryRectangular, 17, whole, run, 0, 1},
        {WidgetFamily::systemMedium, 17, link, run, 1, 1},
        // Before 17 a button does nothing, yet swallows the tap; links still work.
        {WidgetFamily::systemMedium, 16, link, nothing, 1, 0},
        {WidgetFamily::accessoryCircular, 16, whole, nothing, 0, 0},
        // Inline widgets have no controls: the tap falls through to the URL.
        {WidgetFamily::accessoryInline, 18, whole, whole, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(qrv::platform::name(row.family)) + " " + std::to_string(row.version));
        const TapRules rules{row.family, row.version};
        EXPECT_EQ(rules.tap(list, {10, 10}), row.onLink);
        EXPECT_EQ(rules.tap(list, {160, 10}), row.onButton);
        EXPECT_EQ(rules.tap(list, {120, 80}), whole);
        const auto reachable = reachableTargets(list, rules);
        EXPECT_EQ(reachable.widgetURL, list.widgetURL);
        EXPECT_EQ(reachable.links.size(), row.links);
        ASSERT_EQ(reachable.buttons.size(), row.buttons);
        for (const auto& button : reachable.buttons) EXPECT_EQ(button.intent, logWater);
    }
    // Without any URL the app just launches.
    EXPECT_EQ((TapRules{WidgetFamily::systemMedium, 17}.tap(DisplayList{{100, 100}}, {5, 5})),
              TapOutcome(LaunchApp{}));
}
