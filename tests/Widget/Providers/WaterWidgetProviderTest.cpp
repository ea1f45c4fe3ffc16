#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Platform/dispatch/ManualExecutor.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"
#include "Widget/Providers/WaterWidgetProvider.hpp"
#include "Widget/Water/WaterWidgetIntent.hpp"

using namespace qrv::widget;
using namespace qrv::platform;

namespace {

class WaterWidgetProviderTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qrv::units::reloadUnitSystem(std::string(QRV_BIN_DIR));
        char pattern[] = "/tmp/qrv-water-provider-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern), nullptr);
        dir_ = pattern;
        store_ = UserDefaults::atPath(dir_ / "store.plist");
        clock_ = std::make_shared<ManualClock>(at(2024, 3, 9, 15));
        environment_ =
            WidgetDataCacheReaderEnvironment{store_, calendar_, clock_, DispatchQueues{main_, background_},
                                             [this](std::string_view line) { lines_.emplace_back(line); }};
    }
    void TearDown() override {
        std::filesystem::remove_all(dir_);
        qrv::units::reloadUnitSystem();
    }

    Date at(int year, int month, int day, int hour = 0) const {
        return *calendar_.date(DateComponents{year, month, day, hour, 0, 0});
    }
    void storeEntry(const WaterDataEntry& entry) {
        const auto json = entry.encode();
        store_->set("WaterEntryData", PropertyListValue::Data(json.begin(), json.end()));
    }
    // A tap on the widget's button at `when`.
    void tap(const char* unit, const char* amount, Date when) {
        ManualClock tapClock(when);
        InteractiveWidgetDataCacheWriter writer(
            {{InteractiveWidgetDataType::water,
              std::make_shared<InteractiveWaterDataWriteStrategy>("WaterInteractiveData")}},
            store_);
        WaterWidgetIntent(unit, amount).withClock(tapClock).withWriter(writer).perform();
    }

    Timeline<WaterDataEntry> askTimeline() {
        const auto provider = WaterWidgetProvider::make(environment_);
        std::optional<Timeline<WaterDataEntry>> answer;
        provider.getTimeline(TimelineProviderContext{},
                             [&](Timeline<WaterDataEntry> t) { answer = std::move(t); });
        EXPECT_FALSE(answer) << "answered on the calling thread";
        background_->drain();
        EXPECT_TRUE(answer);
        return answer.value_or(Timeline<WaterDataEntry>{});
    }
    WaterDataEntry askSnapshot() {
        const auto provider = WaterWidgetProvider::make(environment_);
        std::optional<WaterDataEntry> answer;
        provider.getSnapshot(TimelineProviderContext{}, [&](WaterDataEntry e) { answer = e; });
        EXPECT_FALSE(answer);
        background_->drain();
        EXPECT_TRUE(answer);
        return answer.value_or(WaterDataEntry{});
    }

    Calendar calendar_{*TimeZone::named("Europe/Berlin")};
    std::filesystem::path dir_;
    std::shared_ptr<UserDefaults> store_;
    std::shared_ptr<ManualClock> clock_;
    std::shared_ptr<ManualExecutor> main_ = std::make_shared<ManualExecutor>();
    std::shared_ptr<ManualExecutor> background_ = std::make_shared<ManualExecutor>();
    std::vector<std::string> lines_;
    WidgetDataCacheReaderEnvironment environment_ = WidgetDataCacheReaderEnvironment::defaults();
};

TEST_F(WaterWidgetProviderTest, TodaysTapsAddToTheStoredFigureOnlyInTheTimeline) {
    const Date now = clock_->now();
    storeEntry(WaterDataEntry{at(2024, 3, 9, 8), true, 500, WaterWidgetUnit::ml});
    tap("ml", "250", now);
    tap("ml", "250", now);

    const auto timeline = askTimeline();
    ASSERT_EQ(timeline.entries.size(), 2u);
    EXPECT_EQ(timeline.entries[0], (WaterDataEntry{at(2024, 3, 9, 8), true, 1000, WaterWidgetUnit::ml}));
    EXPECT_EQ(timeline.entries[1], (WaterDataEntry{at(2024, 3, 10), true, 0, WaterWidgetUnit::ml}));
    EXPECT_EQ(timeline.policy, TimelineReloadPolicy::atEnd());
    EXPECT_EQ(askSnapshot(), (WaterDataEntry{at(2024, 3, 9, 8), true, 500, WaterWidgetUnit::ml}));
    EXPECT_TRUE(store_->boolValue("WaterWidgetInstalled"));
    EXPECT_TRUE(lines_.empty());
}

TEST_F(WaterWidgetProviderTest, FirstEntryResetsDailyAndAddsTodaysTapsInItsUnit) {
    struct Tap {
        const char* unit;
        const char* amount;
        Date when;
    };
    struct Case {
        const char* name;
        std::optional<WaterDataEntry> stored;
        std::vector<Tap> taps;
        bool unitLibrary;
        WaterDataEntry expected;
    };
    const Date now = clock_->now();
    const Date yesterday = at(2024, 3, 8, 21);
    const Case cases[] = {
        {"yesterday's figure resets, logged in, unit kept",
         WaterDataEntry{yesterday, false, 2000, WaterWidgetUnit::ml},
         {{"ml", "250", now}},
         true,
         WaterDataEntry{now, true, 250, WaterWidgetUnit::ml}},
        {"no stored figure: ounces",
         std::nullopt,
         {{"cups", "2", now}},
         true,
         WaterDataEntry{now, true, 16, WaterWidgetUnit::oz}},
        {"yesterday's tap does not count, cups convert to ounces",
         WaterDataEntry{at(2024, 3, 9, 9), true, 10, WaterWidgetUnit::oz},
         {{"oz", "8", yesterday}, {"cups", "2", now}},
         true,
         WaterDataEntry{at(2024, 3, 9, 9), true, 26, WaterWidgetUnit::oz}},
        {"a tap just after midnight counts",
         std::nullopt,
         {{"oz", "8", at(2024, 3, 9)}},
         true,
         WaterDataEntry{now, true, 8, WaterWidgetUnit::oz}},
        {"without the unit library cups add unconverted",
         WaterDataEntry{at(2024, 3, 9, 9), true, 10, WaterWidgetUnit::oz},
         {{"cups", "2", now}},
         false,
         WaterDataEntry{at(2024, 3, 9, 9), true, 12, WaterWidgetUnit::oz}},
    };
    for (const auto& c : cases) {
        store_->removeObject("WaterEntryData");
        store_->removeObject("WaterInteractiveData");
        if (c.stored) storeEntry(*c.stored);
        for (const auto& t : c.taps) tap(t.unit, t.amount, t.when);
        qrv::units::reloadUnitSystem(c.unitLibrary ? std::string(QRV_BIN_DIR) : "/nonexistent");
        const auto timeline = askTimeline();
        ASSERT_EQ(timeline.entries.size(), 2u) << c.name;
        EXPECT_EQ(timeline.entries[0], c.expected) << c.name;
        EXPECT_EQ(timeline.entries[1].date, at(2024, 3, 10)) << c.name;
        EXPECT_EQ(timeline.entries[1].waterValue, 0.0f) << c.name;
    }
}

TEST_F(WaterWidgetProviderTest, UnreadableSourcesFallBackQuietly) {
    store_->set("WaterEntryData", PropertyListValue::Data{'{', '}'});
    store_->set("WaterInteractiveData", PropertyListValue("not data"));
    const auto timeline = askTimeline();
    ASSERT_FALSE(timeline.entries.empty());
    EXPECT_EQ(timeline.entries[0], (WaterDataEntry{clock_->now(), true, 0, WaterWidgetUnit::oz}));
    // The provider never rewrites what it reads.
    EXPECT_EQ(store_->object("WaterInteractiveData"), PropertyListValue("not data"));
    EXPECT_EQ(WaterWidgetProvider::make(environment_).placeholder(TimelineProviderContext{}),
              WaterDataEntry::sample());
}

}  // namespace
