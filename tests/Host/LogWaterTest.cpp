// log-water and the water widget's provider commands, run as the real program.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "tests/Host/HostTestSupport.hpp"

using namespace qrv::platform;
using namespace qrv::widget;

namespace {

class LogWaterTest : public ::testing::Test {
  protected:
    LogWaterTest() { world_.environment["TZ"] = "Europe/Berlin"; }

    qrv::test::HostRun run(std::vector<std::string> args) const {
        args.insert(args.end(), {"--now", "2024-03-09T15:00:00"});
        return world_.run(args);
    }

    std::vector<InteractiveWaterData> logged() const {
        const auto data = world_.store()->data("WaterInteractiveData");
        return data ? decodeInteractiveWaterDataList(*data).value_or(std::vector<InteractiveWaterData>{})
                    : std::vector<InteractiveWaterData>{};
    }

    // The "entry" or "entries" a provider command printed.
    static std::vector<WaterDataEntry> entries(const std::string& json) {
        auto result = decodeJSON<std::vector<WaterDataEntry>>(bytesOf(json), [](const JSONValue& root) {
            const auto object = root.keyedContainer();
            if (object.contains("entry")) return std::vector{WaterDataEntry::fromJSON(object["entry"])};
            std::vector<WaterDataEntry> out;
            for (auto list = object["entries"].unkeyedContainer(); !list.isAtEnd();)
                out.push_back(WaterDataEntry::fromJSON(list.next()));
            return out;
        });
        EXPECT_TRUE(result) << json;
        return std::move(result).toOptional().value_or(std::vector<WaterDataEntry>{});
    }

    qrv::test::HostWorld world_;
    Calendar berlin_{*TimeZone::named("Europe/Berlin")};
};

TEST_F(LogWaterTest, TwoTapsShowInTheTimelineButNotTheSnapshot) {
    const Date morning = *berlin_.date({2024, 3, 9, 8, 0, 0});
    world_.put("WaterEntryData", WaterDataEntry{morning, true, 500, WaterWidgetUnit::ml}.encode());
    for (int tap = 0; tap < 2; ++tap) {
        const auto result = run({"log-water", "--unit", "ml", "--amount", "250"});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.out, "logged 250.0 ml at 2024-03-09T15:00:00+01:00\n");
    }
    const auto timeline = run({"timeline", "--widget", "water"});
    ASSERT_EQ(timeline.exitCode, 0);
    EXPECT_EQ(entries(timeline.out),
              (std::vector<WaterDataEntry>{{morning, true, 1000, WaterWidgetUnit::ml},
                                           {*berlin_.date({2024, 3, 10, 0, 0, 0}), true, 0, WaterWidgetUnit::ml}}));
    const auto snapshot = run({"snapshot", "--widget", "water"});
    ASSERT_EQ(snapshot.exitCode, 0);
    EXPECT_EQ(entries(snapshot.out), (std::vector<WaterDataEntry>{{morning, true, 500, WaterWidgetUnit::ml}}));
}

TEST_F(LogWaterTest, ReadsTextsAsTheWidgetDoesAndRefusesOnlyWhatCannotBeStored) {
    const Date now = *berlin_.date({2024, 3, 9, 15, 0, 0});
    const InteractiveWaterData zeroOunces{now, 0, WaterWidgetUnit::oz}, twoCups{now, 2, WaterWidgetUnit::cups};
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        std::vector<InteractiveWaterData> loggedAfter;  // cumulative
    } cases[] = {
        {{"--unit", "litres", "--amount", "abc"}, 0, {zeroOunces}},
        {{"--unit", "cups", "--amount", "2"}, 0, {zeroOunces, twoCups}},
        {{"--unit", "ml", "--amount", "inf"}, 1, {zeroOunces, twoCups}},  // JSON cannot hold it
        {{"--amount", "250"}, 2, {zeroOunces, twoCups}},
        {{"--unit", "ml", "--amount", "250", "--now", "yesterday"}, 2, {zeroOunces, twoCups}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.arguments));
        auto args = c.arguments;
        args.insert(args.begin(), "log-water");
        EXPECT_EQ(run(args).exitCode, c.exitCode);
        EXPECT_EQ(logged(), c.loggedAfter);
    }
}

}  // namespace
