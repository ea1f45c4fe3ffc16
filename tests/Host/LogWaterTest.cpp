// log-water and the water widget's provider commands, run as the real program.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Platform/time/Calendar.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"

using namespace qrv::platform;
using namespace qrv::widget;

namespace {

struct RunResult {
    int exitCode = -1;
    std::string out;
};

class LogWaterTest : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/qrv-log-water-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern), nullptr);
        container_ = pattern;
        store_ = UserDefaults::openSuite("group.com.qrv.widgets", container_);
        ASSERT_NE(store_, nullptr);
    }
    void TearDown() override { std::filesystem::remove_all(container_); }

    // Runs qrv-widgets in Berlin time on the test's container; standard error is
    // left to the test log.
    RunResult run(const std::string& arguments) const {
        const std::string command = "TZ=Europe/Berlin '" + std::string(QRV_BIN_DIR) + "/qrv-widgets' " +
                                    arguments + " --container '" + container_.string() + "'";
        RunResult result;
        FILE* pipe = ::popen(command.c_str(), "r");
        if (pipe == nullptr) return result;
        std::array<char, 4096> buffer{};
        while (const auto n = std::fread(buffer.data(), 1, buffer.size(), pipe))
            result.out.append(buffer.data(), n);
        const int status = ::pclose(pipe);
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return result;
    }

    std::vector<InteractiveWaterData> logged() const {
        const auto data = store_->data("WaterInteractiveData");
        if (!data) return {};
        return decodeInteractiveWaterDataList(*data).value_or(std::vector<InteractiveWaterData>{});
    }

    // The "entry" or "entries" a provider command printed.
    static std::vector<WaterDataEntry> entries(const std::string& json) {
        auto result = decodeJSON<std::vector<WaterDataEntry>>(bytesOf(json), [](const JSONValue& root) {
            const auto object = root.keyedContainer();
            std::vector<WaterDataEntry> out;
            if (object.contains("entry")) {
                out.push_back(WaterDataEntry::fromJSON(object["entry"]));
            } else {
                auto list = object["entries"].unkeyedContainer();
                while (!list.isAtEnd()) out.push_back(WaterDataEntry::fromJSON(list.next()));
            }
            return out;
        });
        EXPECT_TRUE(result) << json;
        return std::move(result).toOptional().value_or(std::vector<WaterDataEntry>{});
    }

    Calendar berlin_{*TimeZone::named("Europe/Berlin")};
    std::filesystem::path container_;
    std::shared_ptr<UserDefaults> store_;
};

TEST_F(LogWaterTest, TwoTapsShowInTheTimelineButNotTheSnapshot) {
    const Date morning = *berlin_.date({2024, 3, 9, 8, 0, 0});
    const auto stored = WaterDataEntry{morning, true, 500, WaterWidgetUnit::ml}.encode();
    store_->set("WaterEntryData", PropertyListValue::Data(stored.begin(), stored.end()));

    for (int tap = 0; tap < 2; ++tap) {
        const auto result = run("log-water --unit ml --amount 250 --now 2024-03-09T15:00:00");
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.out, "logged 250.0 ml at 2024-03-09T15:00:00+01:00\n");
    }
    const auto timeline = run("timeline --widget water --now 2024-03-09T15:00:00");
    ASSERT_EQ(timeline.exitCode, 0);
    const auto entries = this->entries(timeline.out);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0], (WaterDataEntry{morning, true, 1000, WaterWidgetUnit::ml}));
    EXPECT_EQ(entries[1],
              (WaterDataEntry{*berlin_.date({2024, 3, 10, 0, 0, 0}), true, 0, WaterWidgetUnit::ml}));

    const auto snapshot = run("snapshot --widget water --now 2024-03-09T15:00:00");
    ASSERT_EQ(snapshot.exitCode, 0);
    EXPECT_EQ(this->entries(snapshot.out),
              std::vector<WaterDataEntry>{(WaterDataEntry{morning, true, 500, WaterWidgetUnit::ml})});
}

TEST_F(LogWaterTest, ReadsTextsAsTheWidgetDoesAndRefusesOnlyWhatCannotBeStored) {
    struct Case {
        const char* arguments;
        int exitCode;
        std::vector<InteractiveWaterData> loggedAfter;  // cumulative
    };
    const Date now = *berlin_.date({2024, 3, 9, 15, 0, 0});
    const InteractiveWaterData zeroOunces{now, 0, WaterWidgetUnit::oz};
    const InteractiveWaterData twoCups{now, 2, WaterWidgetUnit::cups};
    const Case cases[] = {
        {"log-water --unit litres --amount abc", 0, {zeroOunces}},
        {"log-water --unit cups --amount 2", 0, {zeroOunces, twoCups}},
        {"log-water --unit ml --amount inf", 1, {zeroOunces, twoCups}},  // JSON cannot hold it
        {"log-water --amount 250", 2, {zeroOunces, twoCups}},
        {"log-water --unit ml --amount 250 --now yesterday", 2, {zeroOunces, twoCups}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(run(std::string(c.arguments) + " --now 2024-03-09T15:00:00").exitCode, c.exitCode)
            << c.arguments;
        EXPECT_EQ(logged(), c.loggedAfter) << c.arguments;
    }
}

}  // namespace
