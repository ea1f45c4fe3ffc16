#include "Widget/Cache/WidgetSettings.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unordered_map>

#include "Widget/Cache/WidgetDataCacheType.hpp"
#include "tests/Platform/store/StoreTestSupport.hpp"

namespace qrv::widget {
namespace {

namespace fs = std::filesystem;
using platform::PropertyListValue;

TEST(WidgetSettingsCacheType, RawValuesNamesAndKeys) {
    struct Row {
        long long raw;
        std::optional<WidgetDataCacheType> type;
        const char* name;
    };
    const std::vector<Row> rows = {
        {0, WidgetDataCacheType::water, "Water"},
        {1, WidgetDataCacheType::calories, "Calories"},
        {2, WidgetDataCacheType::macronutrients, "Macros"},
        {3, std::nullopt, nullptr},
        {-1, std::nullopt, nullptr},
        {-4294967296LL, std::nullopt, nullptr},
        {4294967296LL, std::nullopt, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.raw);
        EXPECT_EQ(widgetDataCacheTypeFromRawValue(row.raw), row.type);
        if (row.type) {
            EXPECT_EQ(rawValue(*row.type), row.raw);
            EXPECT_EQ(typeName(*row.type), row.name);
            EXPECT_EQ(installedKey(*row.type), std::string(row.name) + "WidgetInstalled");
        }
    }
    EXPECT_FALSE(widgetDataCacheTypeFromRawValue(-1));
    EXPECT_FALSE(widgetDataCacheTypeFromRawValue(std::int8_t{-128}));
    EXPECT_EQ(widgetDataCacheTypeFromRawValue(2u), WidgetDataCacheType::macronutrients);

    std::unordered_map<WidgetDataCacheType, int> byType;
    for (auto type : allWidgetDataCacheTypes) {
        byType[type] = rawValue(type);
    }
    EXPECT_EQ(byType.size(), 3u);
    EXPECT_EQ(byType.at(WidgetDataCacheType::macronutrients), 2);
}

TEST(WidgetSettings, OpensTheSuiteInTheChosenContainer) {
    test::ScratchDirectory scratch;
    auto store = WidgetSettings::open(scratch.path());
    ASSERT_TRUE(store);
    EXPECT_EQ(store->filePath(), scratch.path() / "Library/Preferences/group.com.qrv.widgets.plist");
}

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
