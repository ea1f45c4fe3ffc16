// The reader and the providers on real threads (recordings from many
// processes are the reliability tests' part). Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/dispatch/ThreadPoolExecutor.hpp"
#include "Widget/Providers/CaloriesWidgetProvider.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

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

}  // namespace
}  // namespace qrv::widget
