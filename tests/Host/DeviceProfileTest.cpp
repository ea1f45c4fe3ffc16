// Device profiles: the size every family takes on each device, the tablet's
// canvas scaled to its screen, and the margins of widgets that keep them.
#include <gtest/gtest.h>

#include "Host/DeviceProfile.hpp"
#include "Host/RenderWidget.hpp"

using namespace qrv::host;
using qrv::platform::EdgeInsets;
using qrv::platform::Size;
using qrv::platform::WidgetFamily;

TEST(DeviceProfileTest, SizesOfEachFamilyOnEachDevice) {
    struct Row {
        const char* device;
        WidgetFamily family;
        Size layout, display;
    };
    const Row rows[] = {
        {"phone", WidgetFamily::systemSmall, {158, 158}, {158, 158}},
        {"phone", WidgetFamily::systemMedium, {338, 158}, {338, 158}},
        {"phone", WidgetFamily::accessoryCircular, {72, 72}, {72, 72}},
        {"phone", WidgetFamily::accessoryRectangular, {160, 72}, {160, 72}},
        {"phone", WidgetFamily::accessoryInline, {234, 26}, {234, 26}},
        {"pad", WidgetFamily::systemSmall, {155, 155}, {136, 136}},
        {"pad", WidgetFamily::systemMedium, {342, 155}, {300, 136}},
        {"pad", WidgetFamily::accessoryCircular, {72, 72}, {72, 72}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.device) + " " + std::string(qrv::platform::name(row.family)));
        const auto device = DeviceProfile::named(row.device, 17);
        ASSERT_TRUE(device);
        const auto size = device->size(row.family);
        ASSERT_TRUE(size);
        EXPECT_EQ(size->layout, row.layout);
        EXPECT_EQ(size->display, row.display);
    }
    EXPECT_FALSE(DeviceProfile::phone().size(WidgetFamily::systemExtraLarge));
    EXPECT_FALSE(DeviceProfile::named("watch"));
    EXPECT_EQ(DeviceProfile::pad().idiom, qrv::catalog::DeviceIdiom::pad);
    EXPECT_EQ(DeviceProfile::phone(16).systemVersion, 16);
}

TEST(DeviceProfileTest, MarginsOnlyWhereTheWidgetKeepsThem) {
    const auto phone = DeviceProfile::phone();
    EXPECT_EQ(phone.contentMargins(WidgetFamily::systemSmall, false), EdgeInsets::all(16));
    EXPECT_EQ(phone.contentMargins(WidgetFamily::systemMedium, false), EdgeInsets::all(16));
    const auto lock = phone.contentMargins(WidgetFamily::accessoryRectangular, false);
    EXPECT_GT(lock.top, 0);
    EXPECT_LT(lock.top, 16);
    EXPECT_EQ(phone.contentMargins(WidgetFamily::systemSmall, true), EdgeInsets{});
    EXPECT_EQ(phone.contentMargins(WidgetFamily::accessoryInline, true), EdgeInsets{});
}

TEST(DeviceProfileTest, ScaledDisplayListKeepsTapTargetsOnThePicture) {
    qrv::platform::DisplayList list;
    list.size = {342, 155};
    list.hitRegions.push_back({{{171, 0}, {171, 155}}, qrv::platform::LinkTarget{"qrv://x"}});
    list.texts.push_back({"a", "a", {{34.2, 15.5}, {68.4, 31}}, "", 20, false});
    const auto size = *DeviceProfile::pad().size(WidgetFamily::systemMedium);
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
