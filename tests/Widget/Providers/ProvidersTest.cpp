#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "Widget/Providers/CaloriesWidgetProvider.hpp"
#include "Widget/Providers/MacronutrientsWidgetProvider.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

namespace qrv::widget {
namespace {

using platform::Date;
using platform::TimelineProviderContext;
using platform::WidgetFamily;
using test::local;

std::vector<WidgetFetchEvent> recordedEvents(const platform::UserDefaults& store) {
    std::vector<WidgetFetchEvent> events;
    const auto stored = store.object("widget_events");
    if (!stored) return events;
    for (const auto& element : *stored->arrayValue())
        events.push_back(WidgetFetchEvent::decode(*element.dataValue()).value());
    return events;
}

class ProvidersTest : public ::testing::Test {
  protected:
    test::ReaderWorld world;
};

TEST_F(ProvidersTest, CaloriesTimelineRollsOverAtTheNextLocalMidnight) {
    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 14, 30)));
    const auto provider = CaloriesWidgetProvider::make(world.environment());
    std::optional<platform::Timeline<CaloriesConsumedDataEntry>> answer;
    provider.getTimeline(TimelineProviderContext::forFamily(WidgetFamily::systemSmall), [&](auto timeline) {
        EXPECT_TRUE(recordedEvents(*world.store).empty()) << "the event comes after the completion";
        answer = std::move(timeline);
    });
    EXPECT_FALSE(answer) << "never answered on the calling thread";
    world.settle();

    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->policy, platform::TimelineReloadPolicy::atEnd());
    ASSERT_EQ(answer->entries.size(), 2u);
    const auto& [today, tomorrow] = std::tie(answer->entries[0], answer->entries[1]);
    EXPECT_EQ(today.date, local(2024, 3, 9, 14, 30));
    EXPECT_EQ(today.consumed, "1,900");
    EXPECT_EQ(tomorrow.date, local(2024, 3, 10));  // the reader's next-day entry: its rules are tested there
    EXPECT_EQ(tomorrow.consumed, "0");
}

TEST_F(ProvidersTest, EverySnapshotAndTimelineRecordsItsNameAndCoarseSize) {
    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 14)));
    world.put("MacronutrientsData", test::macronutrientsJSON(local(2024, 3, 9, 8)));
    const auto calories = CaloriesWidgetProvider::make(world.environment());
    std::vector<std::pair<std::string, std::string>> expected;
    int answers = 0;
    for (auto family : platform::kAllWidgetFamilies) {
        const auto context = TimelineProviderContext::forFamily(family);
        calories.getSnapshot(context, [&](const CaloriesConsumedDataEntry& entry) {
            EXPECT_EQ(entry.date, local(2024, 3, 9, 14));
            ++answers;
        });
        calories.getTimeline(context, [&](auto) { ++answers; });
        const std::string size = family == WidgetFamily::systemMedium ? "medium" : "small";
        expected.insert(expected.end(), 2, {"widget_calories", size});
    }
    MacronutrientsWidgetProvider::make(world.environment())
        .getTimeline(TimelineProviderContext::forFamily(WidgetFamily::systemMedium), [&](auto timeline) {
            ASSERT_EQ(timeline.entries.size(), 2u);
            EXPECT_EQ(timeline.entries[1].values.at(MacronutrientsDataValueType::carbs).value, 0.0);
            ++answers;
        });
    expected.emplace_back("widget_macros", "medium");
    world.settle();
    EXPECT_EQ(answers, 15);
    std::vector<std::pair<std::string, std::string>> recorded;
    for (const auto& event : recordedEvents(*world.store)) {
        recorded.emplace_back(event.widgetName, event.widgetSize);
        EXPECT_EQ(event.date, local(2024, 3, 9, 15));
    }
    EXPECT_EQ(recorded, expected);
}

TEST_F(ProvidersTest, NoCurrentRecordOrARecordOfAnotherKindGivesNoAnswerAndNoEvent) {
    // Nothing stored; then a reader whose calories strategy decodes macronutrient records.
    auto provider = CaloriesWidgetProvider::make(world.environment());
    int answers = 0;
    provider.getSnapshot(TimelineProviderContext{}, [&](auto) { ++answers; });
    world.settle();
    EXPECT_EQ(world.lines(), std::vector<std::string>{"unable to find data for type: Calories"});

    world.put("CaloriesData", test::macronutrientsJSON(local(2024, 3, 9, 8)));
    auto reader = WidgetDataCacheReader::make(world.environment());
    reader->registerStrategy(
        WidgetDataCacheType::calories,
        std::make_shared<MacronutrientsDataReadStrategy>("CaloriesData", test::newYork(), world.clock));
    provider = CaloriesWidgetProvider(reader, WidgetBackgroundFetchAnalytics(world.store, world.clock));
    provider.getSnapshot(TimelineProviderContext{}, [&](auto) { ++answers; });
    provider.getTimeline(TimelineProviderContext{}, [&](auto) { ++answers; });
    world.settle();
    EXPECT_EQ(answers, 0);
    EXPECT_FALSE(world.store->object("widget_events"));
    EXPECT_EQ(world.lines().size(), 1u) << "dropped silently";
}

TEST_F(ProvidersTest, PlaceholderIsTheSameSampleAndNeverTouchesTheStore) {
    const auto calories = CaloriesWidgetProvider::make(world.environment());
    const auto first = calories.placeholder(TimelineProviderContext::forFamily(WidgetFamily::systemSmall));
    world.clock->advance(3600);
    EXPECT_EQ(calories.placeholder(TimelineProviderContext::forFamily(WidgetFamily::accessoryInline)), first);
    EXPECT_EQ(first, CaloriesConsumedDataEntry::makeSample(local(2024, 3, 9, 15)));
    EXPECT_EQ(MacronutrientsWidgetProvider::make(world.environment()).placeholder({}).values.size(), 3u);
    EXPECT_FALSE(std::filesystem::exists(world.store->filePath()));
    EXPECT_EQ(world.background->pending() + world.main->pending(), 0u);
}

}  // namespace
}  // namespace qrv::widget
