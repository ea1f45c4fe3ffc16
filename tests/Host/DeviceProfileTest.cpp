// Device profiles: the tablet's canvas scaled to its screen, and the margins
// of widgets that keep them.
#include <gtest/gtest.h>

#include "Host/DeviceProfile.hpp"
#include "Host/RenderWidget.hpp"

using namespace qrv::host;
using qrv::platform::EdgeInsets;
using qrv::platform::WidgetFamily;

TEST(DeviceProfileTest, MarginsOnlyWhereTheWidgetKeepsThem) {
    const auto phone = DeviceProfile::phone();
    EXPECT_EQ(phone.contentMargins(WidgetFamily::systemSmall, false), EdgeInsets::all(16));
    const auto lock = phone.contentMargins(WidgetFamily::accessoryRectangular, false);
    EXPECT_GT(lock.top, 0);
    EXPECT_LT(lock.top, 16);
    EXPECT_EQ(phone.contentMargins(WidgetFamily::systemSmall, true), EdgeInsets{});
    EXPECT_EQ(phone.contentMargins(WidgetFamily::accessoryInline, true), EdgeInsets{});
}

// The tablet lays its home-screen widgets out on a larger canvas than it
// shows them at; the phone and the lock screen draw at the layout size.
TEST(DeviceProfileTest, TabletScalesItsCanvasAndItsTapTargetsToTheScreen) {
    for (auto family : {WidgetFamily::systemSmall, WidgetFamily::accessoryCircular}) {
        const auto size = DeviceProfile::phone().size(family);
        ASSERT_TRUE(size);
        EXPECT_EQ(size->layout, size->display);
    }
    EXPECT_EQ(DeviceProfile::pad().size(WidgetFamily::accessoryCircular),
              DeviceProfile::phone().size(WidgetFamily::accessoryCircular));
    EXPECT_FALSE(DeviceProfile::phone().size(WidgetFamily::systemExtraLarge));

    qrv::platform::DisplayList list;
    list.size = {342, 155};
    list.hitRegions.push_back({{{171, 0}, {171, 155}}, qrv::platform::LinkTarget{"qrv://x"}});
    list.texts.push_back({"a", "a", {{34.2, 15.5}, {68.4, 31}}, "", 20, false});
    const auto size = *DeviceProfile::named("pad")->size(WidgetFamily::systemMedium);
    EXPECT_EQ(size.layout, list.size);
    const auto scaled = scaledDisplayList(list, size.scaleX(), size.scaleY());
    EXPECT_NEAR(scaled.size.width, 300, 1e-9);
    EXPECT_NEAR(scaled.size.height, 136, 1e-9);
    EXPECT_NEAR(scaled.hitRegions[0].rect.minX(), 150, 1e-9);
    EXPECT_NEAR(scaled.hitRegions[0].rect.height(), 136, 1e-9);
    EXPECT_NEAR(scaled.texts[0].rect.minX(), 30, 1e-9);
    // The picture itself is drawn through one scale around everything.
    ASSERT_GE(scaled.ops.size(), 3u);
    EXPECT_TRUE(std::holds_alternative<qrv::platform::op::Scale>(scaled.ops[1]));
}
