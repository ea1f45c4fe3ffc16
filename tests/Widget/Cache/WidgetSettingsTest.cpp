#include "Widget/Cache/WidgetSettings.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

#include "Widget/Cache/WidgetDataCacheType.hpp"
#include "tests/Platform/store/StoreTestSupport.hpp"

namespace qrv::widget {
namespace {

namespace fs = std::filesystem;
using platform::PropertyListValue;

// The fallback and the once-only store touch process state, so they run in a child.
TEST(WidgetSettings, UnusableContainerFallsBackToStandardDefaultsWithoutData) {
    test::ScratchDirectory scratch;
    const fs::path data = scratch.path() / "data";
    const fs::path phone = scratch.path() / "phone";
    fs::copy(fs::path(QRV_TEST_DATA) / "fixtures" / "container", phone, fs::copy_options::recursive);
    test::writeBytes(scratch.path() / "plain-file", "x");

    const int status = test::runInChild([&] {
        ::setenv("XDG_DATA_HOME", data.c_str(), 1);
        ::setenv(platform::kAppGroupContainerVariable, (scratch.path() / "plain-file").c_str(), 1);
        auto store = WidgetSettings::defaults();
        if (store != WidgetSettings::defaults()) return 1;
        if (store->filePath() != data / "quorvane/standard/tests_widget.plist") return 2;
        if (store->data("CaloriesData")) return 3;
        store->set(installedKey(WidgetDataCacheType::calories), PropertyListValue(true));
        if (!platform::UserDefaults::standard()->boolValue("CaloriesWidgetInstalled")) return 4;
        try {
            WidgetSettings::useContainer(phone);
            return 5;
        } catch (const std::logic_error&) {
        }
        return 0;
    });
    EXPECT_EQ(status, 0);

    const int chosen = test::runInChild([&] {
        ::setenv(platform::kAppGroupContainerVariable, (scratch.path() / "plain-file").c_str(), 1);
        WidgetSettings::useContainer(phone);
        auto store = WidgetSettings::defaults();
        if (store->filePath() != phone / "Library/Preferences/group.com.qrv.widgets.plist") return 1;
        // A record key holding something other than data counts as missing.
        store->set(WidgetStoreKeys::waterEntryData, PropertyListValue("{\"isLoggedIn\":true}"));
        if (store->data(WidgetStoreKeys::waterEntryData)) return 2;
        return store->data(WidgetStoreKeys::caloriesData) ? 0 : 3;
    });
    EXPECT_EQ(chosen, 0);
}

}  // namespace
}  // namespace qrv::widget
