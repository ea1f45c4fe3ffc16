#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"
#include "Widget/Providers/WaterWidgetProvider.hpp"
#include "Widget/Water/WaterWidgetIntent.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

using namespace qrv::widget;
using namespace qrv::platform;
using qrv::test::local;

namespace {

class WaterWidgetProviderTest : public ::testing::Test {
  protected:
    void SetUp() override { qrv::units::reloadUnitSystem(std::string(QRV_BIN_DIR)); }
    void TearDown() override { qrv::units::reloadUnitSystem(); }

    void storeEntry(const WaterDataEntry& entry) { world.put("WaterEntryData", entry.encode()); }
    // A tap on the widget's button at `when`.
    void tap(const char* unit, const char* amount, Date when) {
        ManualClock tapClock(when);
        InteractiveWidgetDataCacheWriter writer(InteractiveWidgetDataCacheWriter::shared().strategies(),
                                                world.store);
        WaterWidgetIntent(unit, amount).withClock(tapClock).withWriter(writer).perform();
    }

    // Asks the provider, which answers from the background queue.
    template <class Answer, class Ask>
    Answer ask(Ask ask) {
        std::optional<Answer> answer;
        ask(WaterWidgetProvider::make(world.environment()), [&](Answer a) { answer = std::move(a); });
        EXPECT_FALSE(answer) << "answered on the calling thread";
        world.background->drain();
        EXPECT_TRUE(answer);
        return answer.value_or(Answer{});
    }
    Timeline<WaterDataEntry> askTimeline() {
        return ask<Timeline<WaterDataEntry>>([](const auto& p, auto done) { p.getTimeline({}, done); });
    }
    WaterDataEntry askSnapshot() {
        return ask<WaterDataEntry>([](const auto& p, auto done) { p.getSnapshot({}, done); });
    }

    qrv::test::ReaderWorld world;
};

TEST_F(WaterWidgetProviderTest, TodaysTapsAddToTheStoredFigureOnlyInTheTimeline) {
    const Date now = world.clock->now();
    storeEntry(WaterDataEntry{local(2024, 3, 9, 8), true, 500, WaterWidgetUnit::ml});
    tap("ml", "250", now);
    tap("ml", "250", now);

    const auto timeline = askTimeline();
    ASSERT_EQ(timeline.entries.size(), 2u);
    EXPECT_EQ(timeline.entries[0], (WaterDataEntry{local(2024, 3, 9, 8), true, 1000, WaterWidgetUnit::ml}));
    EXPECT_EQ(timeline.entries[1], (WaterDataEntry{local(2024, 3, 10), true, 0, WaterWidgetUnit::ml}));
    EXPECT_EQ(timeline.policy, TimelineReloadPolicy::atEnd());
    EXPECT_EQ(askSnapshot(), (WaterDataEntry{local(2024, 3, 9, 8), true, 500, WaterWidgetUnit::ml}));
    EXPECT_TRUE(world.store->boolValue("WaterWidgetInstalled"));
    EXPECT_TRUE(world.lines().empty());
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
    const Date now = world.clock->now(), nine = local(2024, 3, 9, 9), yesterday = local(2024, 3, 8, 21);
    const auto ml = [](Date d, float v) { return WaterDataEntry{d, true, v, WaterWidgetUnit::ml}; };
    const auto oz = [](Date d, float v) { return WaterDataEntry{d, true, v, WaterWidgetUnit::oz}; };
    const WaterDataEntry loggedOutYesterday{yesterday, false, 2000, WaterWidgetUnit::ml};
    // Cups count in ounces: 2 cups are 16 oz.
    const Case cases[] = {
        {"yesterday's figure resets", loggedOutYesterday, {{"ml", "250", now}}, true, ml(now, 250)},
        {"no stored figure: ounces", std::nullopt, {{"cups", "2", now}}, true, oz(now, 16)},
        {"today's taps only", oz(nine, 10), {{"oz", "8", yesterday}, {"cups", "2", now}}, true, oz(nine, 26)},
        {"a tap at midnight counts", std::nullopt, {{"oz", "8", local(2024, 3, 9)}}, true, oz(now, 8)},
        {"no unit library: cups add as they are", oz(nine, 10), {{"cups", "2", now}}, false, oz(nine, 12)},
    };
    for (const auto& c : cases) {
        world.store->removeObject("WaterEntryData");
        world.store->removeObject("WaterInteractiveData");
        if (c.stored) storeEntry(*c.stored);
        for (const auto& t : c.taps) tap(t.unit, t.amount, t.when);
        qrv::units::reloadUnitSystem(c.unitLibrary ? std::string(QRV_BIN_DIR) : "/nonexistent");
        const auto timeline = askTimeline();
        ASSERT_EQ(timeline.entries.size(), 2u) << c.name;
        EXPECT_EQ(timeline.entries[0], c.expected) << c.name;
        EXPECT_EQ(timeline.entries[1].date, local(2024, 3, 10)) << c.name;
        EXPECT_EQ(timeline.entries[1].waterValue, 0.0f) << c.name;
    }
}

TEST_F(WaterWidgetProviderTest, UnreadableSourcesFallBackQuietly) {
    world.store->set("WaterEntryData", PropertyListValue::Data{'{', '}'});
    world.store->set("WaterInteractiveData", PropertyListValue("not data"));
    const auto timeline = askTimeline();
    ASSERT_FALSE(timeline.entries.empty());
    EXPECT_EQ(timeline.entries[0], (WaterDataEntry{world.clock->now(), true, 0, WaterWidgetUnit::oz}));
    // The provider never rewrites what it reads.
    EXPECT_EQ(world.store->object("WaterInteractiveData"), PropertyListValue("not data"));
}

}  // namespace
