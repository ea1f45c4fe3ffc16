// Many processes writing the shared store at once: every tap and every fetch
// event lands, none is lost to an overlapping read-modify-write.
#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "Platform/store/UserDefaults.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Providers/WidgetBackgroundFetchAnalytics.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"
#include "tests/reliability/ReliabilitySupport.hpp"

using namespace qrv;
using namespace qrv::reliability;

namespace {

TEST(ConcurrentWriters, LogWaterFromManyProcessesKeepsEveryTap) {
    constexpr int kProcesses = 4;
    constexpr int kTaps = 25;
    Scratch scratch;
    const auto container = scratch / "container";
    fs::create_directories(container);
    const auto environment = programEnvironment(scratch / "data");

    // Process p logs the amounts p*1000+1 ... p*1000+kTaps, so each tap is recognisable.
    const auto statuses = runTogether(kProcesses, [&](int process) {
        for (int tap = 1; tap <= kTaps; ++tap) {
            const auto result = runProgram(qrvWidgets(),
                                           {"log-water", "--unit", "ml", "--amount",
                                            std::to_string(process * 1000 + tap), "--container", container.string()},
                                           environment, scratch.path());
            if (result.exitCode != 0) {
                std::fprintf(stderr, "log-water failed (%d): %s\n", result.exitCode, result.err.c_str());
                return 1;
            }
        }
        return 0;
    });
    EXPECT_EQ(statuses, std::vector<int>(kProcesses, 0));

    const auto store = platform::UserDefaults::atPath(storeFile(container));
    const auto data = store->data("WaterInteractiveData");
    ASSERT_TRUE(data.has_value());
    const auto records = widget::decodeInteractiveWaterDataList(*data);
    ASSERT_TRUE(records.has_value());
    std::vector<std::vector<int>> byProcess(kProcesses);
    for (const auto& record : *records) {
        EXPECT_EQ(record.waterUnit, widget::WaterWidgetUnit::ml);
        const int amount = static_cast<int>(record.waterValue);
        ASSERT_LT(amount / 1000, kProcesses) << amount;
        byProcess[static_cast<std::size_t>(amount / 1000)].push_back(amount % 1000);
    }
    // Every tap of each process is there once, in the order it was logged.
    std::vector<int> everyTap(kTaps);
    std::iota(everyTap.begin(), everyTap.end(), 1);
    for (const auto& own : byProcess) EXPECT_EQ(own, everyTap);
}

TEST(ConcurrentWriters, FetchRecordingsFromManyProcessesAllLand) {
    constexpr int kProcesses = 4;
    constexpr int kRecordings = 50;
    Scratch scratch;
    const auto file = storeFile(scratch / "container");

    const auto statuses = runTogether(kProcesses, [&](int process) {
        const widget::WidgetBackgroundFetchAnalytics analytics(platform::UserDefaults::atPath(file));
        for (int recording = 0; recording < kRecordings; ++recording)
            analytics.recordFetch("widget_" + std::to_string(process), std::to_string(recording));
        return 0;
    });
    EXPECT_EQ(statuses, std::vector<int>(kProcesses, 0));

    const auto stored = platform::UserDefaults::atPath(file)->object("widget_events");
    ASSERT_TRUE(stored.has_value());
    ASSERT_NE(stored->arrayValue(), nullptr);
    std::vector<int> next(kProcesses, 0);  // the recording each process should show next
    for (const auto& element : *stored->arrayValue()) {
        ASSERT_NE(element.dataValue(), nullptr);
        const auto event = widget::WidgetFetchEvent::decode(*element.dataValue());
        ASSERT_TRUE(event.hasValue());
        const int process = std::stoi(event.value().widgetName.substr(7));
        ASSERT_TRUE(process >= 0 && process < kProcesses);
        EXPECT_EQ(event.value().widgetSize, std::to_string(next[process])) << "process " << process;
        ++next[process];
    }
    EXPECT_EQ(next, std::vector<int>(kProcesses, kRecordings));
}

}  // namespace
