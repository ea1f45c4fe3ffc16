#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "tests/Host/HostTestSupport.hpp"

namespace qrv::host {
namespace {

using platform::Date;
using test::local;

template <class Entry>
struct Answer {
    std::string widget, family, policy;
    std::vector<Entry> entries;  // the timeline's, or the one entry of a snapshot/placeholder
};

template <class Entry>
Answer<Entry> parse(const std::string& json) {
    return platform::decodeJSON<Answer<Entry>>(platform::bytesOf(json), [](const platform::JSONValue& root) {
               const auto object = root.keyedContainer();
               Answer<Entry> answer{object.decodeString("widget"), object.decodeString("family"), {}, {}};
               if (object.contains("entry")) {
                   answer.entries.push_back(Entry::fromJSON(object["entry"]));
                   return answer;
               }
               answer.policy = object.decodeString("policy");
               for (auto entries = object["entries"].unkeyedContainer(); !entries.isAtEnd();)
                   answer.entries.push_back(Entry::fromJSON(entries.next()));
               return answer;
           })
        .value();
}

struct Event {
    std::string name, size;
    Date date;
    friend bool operator==(const Event&, const Event&) = default;
};

std::vector<Event> events(const test::HostWorld& world) {
    const auto run = world.run({"events"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    return platform::decodeJSON<std::vector<Event>>(platform::bytesOf(run.out), [](const platform::JSONValue& root) {
               std::vector<Event> list;
               for (auto array = root.unkeyedContainer(); !array.isAtEnd();) {
                   const auto event = array.next().keyedContainer();
                   list.push_back({event.decodeString("widgetName"), event.decodeString("widgetSize"),
                                   event.decodeDate("date")});
               }
               return list;
           })
        .value();
}

const std::string kNow = "2024-03-09T15:00";  // local time in the child's TZ

TEST(ProviderCommandsTest, CaloriesTimelineOfTodayEndsAtTheNextLocalMidnight) {
    test::HostWorld world;
    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 14)));
    const auto run = world.run({"timeline", "--widget", "calories", "--now", kNow});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const auto answer = parse<widget::CaloriesConsumedDataEntry>(run.out);
    EXPECT_EQ(answer.widget, "calories");
    EXPECT_EQ(answer.family, "systemSmall");
    EXPECT_EQ(answer.policy, "atEnd");
    ASSERT_EQ(answer.entries.size(), 2u);
    const auto& next = answer.entries[1];
    EXPECT_EQ(next.date, Date{731739600});  // 2024-03-10 00:00 EST
    EXPECT_EQ(next.consumed, "0");  // the day's reset itself is the read strategy's, tested with it
    EXPECT_EQ(next.remaining, next.goal);
    EXPECT_EQ(events(world), (std::vector<Event>{{"widget_calories", "small", local(2024, 3, 9, 15)}}));
}

// Which size each family records is the providers' rule, tested with them;
// here the family reaches the provider and its event is listed.
TEST(ProviderCommandsTest, SnapshotTakesTheFamilyAndRecordsItsSize) {
    test::HostWorld world;
    world.put("MacronutrientsData", test::macronutrientsJSON(local(2024, 3, 9, 8)));
    const auto run =
        world.run({"snapshot", "--widget", "macronutrients", "--family", "systemMedium", "--now", kNow});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(parse<widget::MacronutrientsDataEntry>(run.out).family, "systemMedium");
    EXPECT_EQ(events(world), (std::vector<Event>{{"widget_macros", "medium", local(2024, 3, 9, 15)}}));
}

TEST(ProviderCommandsTest, NoCurrentRecordGivesNoEntryAsSoonAsTheProviderHasStopped) {
    // A provider that found nothing never answers; the command says so once the
    // provider has nothing left to do, not after the whole --wait.
    const struct {
        const char* command;
        bool storedYesterday;
        const char* line;
    } cases[] = {{"timeline", true, "unable to decode entry for type: Calories"},
                 {"snapshot", true, "unable to decode entry for type: Calories"},
                 {"timeline", false, "unable to find data for type: Calories"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.command) + (c.storedYesterday ? " yesterday" : " empty"));
        test::HostWorld world;
        if (c.storedYesterday) world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 8, 23, 59)));
        const auto started = std::chrono::steady_clock::now();
        const auto run = world.run({c.command, "--widget", "calories", "--now", kNow, "--wait", "60"});
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(30));
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_EQ(test::linesOf(run.out), std::vector<std::string>{c.line});
        EXPECT_NE(run.err.find("no entry"), std::string::npos) << run.err;
        EXPECT_TRUE(world.store()->boolValue("CaloriesWidgetInstalled"));
        EXPECT_FALSE(world.store()->object("widget_events"));
    }
}

TEST(ProviderCommandsTest, PlaceholderIsTheSampleDatedNowWithoutTouchingTheStore) {
    test::HostWorld world;
    const auto out = world.folder.path() / "answer.json";
    const auto run = world.run(
        {"placeholder", "--widget", "calories", "--family", "accessoryInline", "--now", kNow, "--out", out});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "");
    const auto answer = parse<widget::CaloriesConsumedDataEntry>(test::slurp(out));
    EXPECT_EQ(answer.family, "accessoryInline");
    EXPECT_EQ(answer.entries,
              std::vector{widget::CaloriesConsumedDataEntry::makeSample(local(2024, 3, 9, 15))});
    EXPECT_TRUE(world.store()->dictionaryRepresentation().empty());
}

TEST(ProviderCommandsTest, BadArgumentsAreNamedWithTheirAllowedValues) {
    test::HostWorld world;
    struct Case {
        std::vector<std::string> args;
        std::vector<std::string> mentions;
    };
    const Case cases[] = {
        {{"timeline", "--widget", "steps"}, {"--widget", "calories", "macronutrients"}},
        {{"timeline"}, {"--widget"}},
        {{"snapshot", "--widget", "calories", "--family", "systemHuge"},
         {"--family", "systemSmall", "accessoryInline"}},
        {{"snapshot", "--widget", "calories", "--now", "yesterday"}, {"--now"}},
        {{"snapshot", "--widget", "calories", "--wait", "-1"}, {"--wait"}},
        {{"store", "--container", (world.folder.path() / "missing").string()}, {"--container"}},
    };
    for (const auto& c : cases) {
        const auto run = world.run(c.args, false);
        EXPECT_EQ(run.exitCode, 2) << c.args[0] << ' ' << run.err;
        for (const auto& mention : c.mentions) EXPECT_NE(run.err.find(mention), std::string::npos) << run.err;
    }
    for (const char* command : {"placeholder", "snapshot", "timeline", "events", "store"}) {
        const auto run = world.run({command, "--help"}, false);
        EXPECT_EQ(run.exitCode, 0) << command;
        EXPECT_NE(run.out.find("--container"), std::string::npos) << command;
    }
}

TEST(ProviderCommandsTest, EventsAndStoreShowWhatTheStoreHolds) {
    test::HostWorld world;
    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 14)));
    world.put("WaterEntryData", R"({"date":0})");
    const std::string good = R"({"widgetName":"widget_macros","widgetSize":"small","date":5})";
    world.store()->set("widget_events", platform::PropertyListValue::Array{
                                            platform::PropertyListValue::Data(good.begin(), good.end()),
                                            platform::PropertyListValue("text")});
    world.store()->set("MacrosWidgetInstalled", true);

    const auto listed = world.run({"events"});
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_EQ(listed.out, "[" + good + "]\n");
    EXPECT_NE(listed.err.find("widget_events[1]"), std::string::npos) << listed.err;

    const auto shown = world.run({"store"});
    ASSERT_EQ(shown.exitCode, 0) << shown.err;
    for (const char* part : {R"("installed":{"Water":false,"Calories":false,"Macros":true,"Unknown":false})",
                             R"("key":"CaloriesData","type":"data")", R"("record":{"date":731703600,)",
                             R"("key":"WaterEntryData","type":"data","size":10,"error":)",
                             R"("key":"MacrosWidgetInstalled","type":"boolean","value":true)",
                             R"("records":[)"
                             "{\"widgetName\":\"widget_macros\""}) {
        EXPECT_NE(shown.out.find(part), std::string::npos) << part << "\n" << shown.out;
    }
}

}  // namespace
}  // namespace qrv::host
