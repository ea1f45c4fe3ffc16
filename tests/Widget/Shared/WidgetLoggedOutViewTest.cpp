// The logged-out view: the message on the neutral ground on the home screen,
// the bare placeholder on the lock screen, and which family decides.
#include "Widget/Shared/WidgetLoggedOutView.hpp"

#include "tests/Widget/Shared/WidgetGoldenSupport.hpp"

#include <gtest/gtest.h>

namespace qrv::widget {
namespace {

using namespace qrv::platform;
using testing::expectGolden;
using testing::recorded;

const std::string kMessage = "Log in to view data.";

bool hasGround(const DisplayList& list) {
    for (const auto& o : list.ops)
        if (auto* f = std::get_if<op::FillPath>(&o); f && f->color.name == "neutralsMidground2") return true;
    return false;
}

TEST(WidgetLoggedOutView, GoldenHomeScreenAndAccessory) {
    expectGolden("loggedout_systemSmall",
                 recorded(WidgetLoggedOutView{kMessage, std::nullopt}, {158, 158}, WidgetFamily::systemSmall));
    expectGolden("loggedout_accessoryCircular",
                 recorded(WidgetLoggedOutView{kMessage, std::nullopt}, {72, 72}, WidgetFamily::accessoryCircular));
}

TEST(WidgetLoggedOutView, TheExplicitFamilyOverridesTheEnvironment) {
    struct Case {
        WidgetFamily environment;
        std::optional<WidgetFamily> sizeFamily;
        std::optional<std::string> text;
        std::string shown;
        bool ground;
    } cases[] = {
        {WidgetFamily::systemSmall, std::nullopt, kMessage, kMessage, true},
        {WidgetFamily::systemMedium, std::nullopt, kMessage, kMessage, true},
        {WidgetFamily::accessoryRectangular, std::nullopt, kMessage, "--", false},
        {WidgetFamily::systemSmall, WidgetFamily::accessoryCircular, kMessage, "--", false},
        {WidgetFamily::accessoryCircular, WidgetFamily::systemMedium, kMessage, kMessage, true},
        {WidgetFamily::systemSmall, std::nullopt, std::nullopt, "", true},  // no text: empty, not "--"
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << name(c.environment) << " / "
                                          << (c.sizeFamily ? name(*c.sizeFamily) : "none"));
        const DisplayList list = recorded(WidgetLoggedOutView{c.text, c.sizeFamily}, {158, 158}, c.environment);
        EXPECT_EQ(hasGround(list), c.ground);
        ASSERT_EQ(list.texts.size(), 1u);
        EXPECT_EQ(list.texts[0].text, c.shown);
    }
}

TEST(WidgetLoggedOutView, MessageIsPaddedAndGroundFillsTheWidgetPastItsMargins) {
    RenderOptions options;
    options.size = {158, 158};
    options.contentMargins = EdgeInsets::all(16);
    static const FixedAdvanceTextMeasurer measurer;
    const DisplayList list = render(WidgetLoggedOutView{kMessage, std::nullopt}, options, measurer);
    const op::FillPath* ground = nullptr;
    for (const auto& o : list.ops)
        if (auto* f = std::get_if<op::FillPath>(&o); f && f->color.name == "neutralsMidground2") ground = f;
    ASSERT_NE(ground, nullptr);
    EXPECT_EQ(ground->path.bounds(), (Rect{{0, 0}, {158, 158}}));  // past the content margins
    ASSERT_EQ(list.texts.size(), 1u);
    const Rect& text = list.texts[0].rect;
    EXPECT_GE(text.minX(), 16 + 20 - 1e-9);
    EXPECT_LE(text.maxX(), 158 - 16 - 20 + 1e-9);
}

}  // namespace
}  // namespace qrv::widget
