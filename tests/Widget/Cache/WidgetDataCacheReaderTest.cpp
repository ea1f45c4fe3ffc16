#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Widget/Cache/WidgetDataCacheReader.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

namespace qrv::widget {
namespace {

using platform::Date;
using test::local;

class WidgetDataCacheReaderTest : public ::testing::Test {
  protected:
    std::shared_ptr<WidgetDataCacheReader> readerWith(WidgetDataCacheType type) {
        using enum WidgetDataCacheType;
        const auto& calendar = test::newYork();
        WidgetDataCacheReader::Strategy strategy;
        if (type == calories)
            strategy = std::make_shared<CaloriesDataReadStrategy>("CaloriesData", calendar, world.clock);
        if (type == macronutrients)
            strategy =
                std::make_shared<MacronutrientsDataReadStrategy>("MacronutrientsData", calendar, world.clock);
        if (type == water)
            strategy = std::make_shared<WaterDataReadStrategy>("WaterEntryData", calendar, world.clock);
        auto reader = WidgetDataCacheReader::make(world.environment());
        reader->registerStrategy(type, strategy);
        return reader;
    }

    // Starts a completion-style read and lets every queue run; the delivered entry, if any.
    std::optional<AnyWidgetDataCacheEntry> readAndSettle(WidgetDataCacheReader& reader,
                                                         WidgetDataCacheType type) {
        std::optional<AnyWidgetDataCacheEntry> delivered;
        int calls = 0;
        reader.read(type, [&](AnyWidgetDataCacheEntry entry) {
            ++calls;
            delivered = std::move(entry);
        });
        EXPECT_EQ(calls, 0) << "the completion never runs inside read()";
        world.background->drain();
        EXPECT_EQ(calls, 0) << "nor on the background queue";
        world.settle();
        EXPECT_LE(calls, 1);
        return delivered;
    }

    test::ReaderWorld world;
};

TEST_F(WidgetDataCacheReaderTest, MissingStrategyIsPrintedWhereAnAnswerWasAwaited) {
    auto reader = readerWith(WidgetDataCacheType::calories);
    EXPECT_FALSE(readAndSettle(*reader, WidgetDataCacheType::water));
    EXPECT_EQ(world.lines(), std::vector<std::string>{"unable to find strategy for type: Water"});
    EXPECT_EQ(world.background->pending(), 0u);
    EXPECT_FALSE(world.store->object("WaterWidgetInstalled")) << "no flag without a strategy";
    // The synchronous read sets the flag first, quietly, on the calling thread.
    EXPECT_FALSE(reader->read(WidgetDataCacheType::macronutrients));
    EXPECT_TRUE(world.store->boolValue("MacrosWidgetInstalled"));
    EXPECT_EQ(world.lines().size(), 1u);
    EXPECT_EQ(world.background->pending() + world.main->pending(), 0u);

    const auto calories = *CaloriesConsumedDataEntry::decode(platform::bytesOf(test::caloriesJSON(Date{0})));
    EXPECT_FALSE(reader->nextDayEntry(calories, WidgetDataCacheType::macronutrients));
    EXPECT_EQ(world.lines().back(), "unable to find strategy for type: Macros");
}

// Every way a stored record can fail gives one line, the installed flag, and no callback.
TEST_F(WidgetDataCacheReaderTest, FailuresPrintOneLineEach) {
    struct Case {
        const char* name;
        std::optional<std::string> stored;  // JSON put under "CaloriesData" as data
        bool storeAsText;
        const char* line;
    };
    const Case cases[] = {
        {"missing", std::nullopt, false, "unable to find data for type: Calories"},
        {"text, not data", test::caloriesJSON(local(2024, 3, 9, 10)), true,
         "unable to find data for type: Calories"},
        {"undecodable", std::string(R"({"date":1})"), false, "unable to decode entry for type: Calories"},
        {"yesterday 23:59", test::caloriesJSON(local(2024, 3, 8, 23, 59)), false,
         "unable to decode entry for type: Calories"},
        {"exactly midnight", test::caloriesJSON(local(2024, 3, 9)), false,
         "unable to decode entry for type: Calories"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        world.store->removeObject("CaloriesData");
        world.store->removeObject("CaloriesWidgetInstalled");
        world.printed->clear();
        if (c.stored && c.storeAsText)
            world.store->set("CaloriesData", *c.stored);
        else if (c.stored)
            world.put("CaloriesData", *c.stored);

        auto reader = readerWith(WidgetDataCacheType::calories);
        EXPECT_FALSE(readAndSettle(*reader, WidgetDataCacheType::calories));
        EXPECT_EQ(world.lines(), std::vector<std::string>{c.line});
        EXPECT_TRUE(world.store->boolValue("CaloriesWidgetInstalled"));
        EXPECT_FALSE(reader->read(WidgetDataCacheType::calories)) << "the async read fails alike";
        EXPECT_EQ(world.lines().size(), 1u) << "and prints nothing";
    }
}

TEST_F(WidgetDataCacheReaderTest, CurrentRecordsAreDeliveredOnTheMainQueue) {
    struct Case {
        WidgetDataCacheType type;
        const char* key;
        std::string json;
    };
    const Case cases[] = {
        {WidgetDataCacheType::calories, "CaloriesData", test::caloriesJSON(local(2024, 3, 9, 0, 0, 1))},
        {WidgetDataCacheType::calories, "CaloriesData", test::caloriesJSON(local(2024, 3, 12))},  // future
        {WidgetDataCacheType::macronutrients, "MacronutrientsData",
         test::macronutrientsJSON(local(2024, 3, 9, 8))},
        // Water never expires: last week's record is shown as it stands.
        {WidgetDataCacheType::water, "WaterEntryData", test::waterJSON(local(2024, 3, 2, 9))},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        world.put(c.key, c.json);
        auto reader = readerWith(c.type);
        const auto delivered = readAndSettle(*reader, c.type);
        ASSERT_TRUE(delivered);
        EXPECT_EQ(delivered, reader->strategy(c.type)->decodeEntry(platform::bytesOf(c.json)));
        EXPECT_TRUE(world.store->boolValue(installedKey(c.type)));
        EXPECT_EQ(reader->read(c.type), delivered);
        EXPECT_TRUE(world.lines().empty());
    }
}

// A pending read outlives its reader: it still runs to its end, and names the
// type "Unknown" in the flag and "unknown" in its line.
TEST_F(WidgetDataCacheReaderTest, ReadOutlivingItsReaderSaysUnknown) {
    auto reader = readerWith(WidgetDataCacheType::calories);
    std::weak_ptr<WidgetDataCacheReader> weak = reader;
    reader->read(WidgetDataCacheType::calories, [](AnyWidgetDataCacheEntry) { FAIL() << "nothing stored"; });
    reader.reset();
    EXPECT_TRUE(weak.expired()) << "the pending read holds its reader weakly";
    world.settle();
    EXPECT_TRUE(world.store->boolValue("UnknownWidgetInstalled"));
    EXPECT_FALSE(world.store->object("CaloriesWidgetInstalled"));
    EXPECT_EQ(world.lines(), std::vector<std::string>{"unable to find data for type: unknown"});

    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 12)));
    reader = readerWith(WidgetDataCacheType::calories);
    int calls = 0;
    reader->read(WidgetDataCacheType::calories, [&](AnyWidgetDataCacheEntry) { ++calls; });
    reader.reset();
    world.settle();
    EXPECT_EQ(calls, 1) << "the strategy and completion were copied into the work";
}

TEST_F(WidgetDataCacheReaderTest, NextDayEntriesResetTheDayAtTheNextLocalMidnight) {
    using enum WidgetDataCacheType;
    // Today's record as stored, and the reader's entry for the next day.
    const auto todayAndNext = [&](WidgetDataCacheType type, const std::string& json) {
        const auto reader = readerWith(type);
        const auto today = *reader->strategy(type)->decodeEntry(platform::bytesOf(json));
        return std::pair{today, reader->nextDayEntry(today, type).value()};
    };
    // 2024-03-10 is 23 hours long in New York: the day is added on the calendar.
    const Date midnight{731739600};  // 2024-03-10 00:00 EST
    const auto [today, next] = todayAndNext(calories, test::caloriesJSON(local(2024, 3, 9, 15)));
    auto wanted = std::get<CaloriesConsumedDataEntry>(today);
    wanted.date = midnight;
    wanted.consumed = wanted.exercise = "0";
    wanted.remaining = "2,000";
    wanted.progress = wanted.reverseProgress = wanted.exerciseProgress = 0;
    EXPECT_EQ(next, AnyWidgetDataCacheEntry(wanted));

    const auto [macrosToday, macrosNext] =
        todayAndNext(macronutrients, test::macronutrientsJSON(local(2024, 3, 9, 8)));
    auto macros = std::get<MacronutrientsDataEntry>(macrosToday);
    macros.date = midnight;
    for (auto& [kind, value] : macros.values) value.value = 0;
    EXPECT_EQ(macrosNext, AnyWidgetDataCacheEntry(macros));  // absent nutrients stay absent

    const auto [waterToday, waterNext] =
        todayAndNext(water, test::waterJSON(local(2024, 3, 9, 8), 900, "cups"));
    EXPECT_EQ(waterNext, AnyWidgetDataCacheEntry(WaterDataEntry{midnight, true, 0, WaterWidgetUnit::cups}));

    // A strategy leaves a record of another kind as it is.
    EXPECT_EQ(readerWith(calories)->strategy(calories)->makeNextDayEntry(waterToday), waterToday);
    EXPECT_EQ(readerWith(water)->strategy(water)->makeNextDayEntry(today), today);
}

}  // namespace
}  // namespace qrv::widget
