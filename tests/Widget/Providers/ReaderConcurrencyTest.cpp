// The reader, the providers and the fetch analytics on real threads and in
// several processes. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/dispatch/ThreadPoolExecutor.hpp"
#include "Widget/Providers/CaloriesWidgetProvider.hpp"
#include "tests/Host/HostTestSupport.hpp"

namespace qrv::widget {
namespace {

using test::local;

struct RealQueues {
    std::shared_ptr<platform::MainQueue> main = std::make_shared<platform::MainQueue>();
    std::shared_ptr<platform::ThreadPoolExecutor> pool = std::make_shared<platform::ThreadPoolExecutor>(3);

    WidgetDataCacheReaderEnvironment environment(const test::ReaderWorld& world) const {
        auto environment = world.environment();
        environment.queues = {main, pool};
        return environment;
    }
};

TEST(ReaderConcurrencyTest, ReadsOnThePoolDeliverOnTheDrainingThread) {
    test::ReaderWorld world;
    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 14)));
    RealQueues queues;
    const auto provider = CaloriesWidgetProvider::make(queues.environment(world));
    const auto loopThread = std::this_thread::get_id();
    constexpr int kRequests = 12;
    int answered = 0;  // only touched on this thread
    for (int i = 0; i < kRequests; ++i) {
        provider.getTimeline(platform::TimelineProviderContext{}, [&](auto timeline) {
            EXPECT_EQ(std::this_thread::get_id(), loopThread);
            EXPECT_EQ(timeline.entries.size(), 2u);
            ++answered;
        });
    }
    ASSERT_TRUE(queues.main->runUntil([&] { return answered == kRequests; }, std::chrono::seconds(60)));
    queues.pool.reset();  // joins: every read has finished
    queues.main->drain();
    EXPECT_EQ(answered, kRequests);
    EXPECT_EQ(world.store->object("widget_events")->arrayValue()->size(), std::size_t{kRequests});
}

TEST(ReaderConcurrencyTest, ReadersReleasedWhileTheirReadsRunAreNotNeeded) {
    test::ReaderWorld world;
    RealQueues queues;
    for (int i = 0; i < 8; ++i) {
        auto reader = WidgetDataCacheReader::make(queues.environment(world));
        reader->registerStrategy(
            WidgetDataCacheType::calories,
            std::make_shared<CaloriesDataReadStrategy>("CaloriesData", test::newYork(), world.clock));
        reader->read(WidgetDataCacheType::calories,
                     [](AnyWidgetDataCacheEntry) { FAIL() << "nothing stored"; });
    }  // each reader goes while its read may still be queued or running
    queues.pool.reset();
    queues.main->drain();
    const auto lines = world.lines();
    ASSERT_EQ(lines.size(), 8u);
    for (const auto& line : lines)
        EXPECT_TRUE(line == "unable to find data for type: Calories" ||
                    line == "unable to find data for type: unknown")
            << line;
}

// Separate store objects on one file lock like separate processes do.
TEST(ReaderConcurrencyTest, OverlappingRecordingsAllLand) {
    test::ReaderWorld world;
    constexpr int kThreads = 4, kEach = 10;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            const WidgetBackgroundFetchAnalytics analytics(
                platform::UserDefaults::atPath(world.store->filePath()), world.clock);
            for (int i = 0; i < kEach; ++i) analytics.recordFetch("widget_" + std::to_string(t), "small");
        });
    }
    for (auto& thread : threads) thread.join();
    const auto stored = world.store->object("widget_events");
    ASSERT_TRUE(stored);
    std::map<std::string, int> perName;
    for (const auto& blob : *stored->arrayValue())
        ++perName[WidgetFetchEvent::decode(*blob.dataValue()).value().widgetName];
    EXPECT_EQ(stored->arrayValue()->size(), std::size_t{kThreads * kEach});
    for (int t = 0; t < kThreads; ++t) EXPECT_EQ(perName["widget_" + std::to_string(t)], kEach);
}

TEST(ReaderConcurrencyTest, TwoHostProcessesRecordingAtOnceBothLand) {
    test::HostWorld world;
    world.put("CaloriesData", test::caloriesJSON(local(2024, 3, 9, 14)));
    const std::string loop =
        "for i in 1 2 3 4 5; do \"$QRV_BIN_DIR/qrv-widgets\" snapshot --widget calories "
        "--now 2024-03-09T15:00 --container \"$1\" >/dev/null || exit 1; done";
    const auto first = world.start({"/bin/sh", "-c", loop, "sh", world.container.string()}, "first");
    const auto second = world.start({"/bin/sh", "-c", loop, "sh", world.container.string()}, "second");
    EXPECT_EQ(test::HostWorld::finish(first).exitCode, 0);
    EXPECT_EQ(test::HostWorld::finish(second).exitCode, 0);
    const auto stored = world.store()->object("widget_events");
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->arrayValue()->size(), 10u);
}

}  // namespace
}  // namespace qrv::widget
