#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>
#include <vector>

#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/dispatch/ThreadPoolExecutor.hpp"

namespace qrv::platform {
namespace {

// Work sent from the pool's threads back to the main queue runs on the thread
// that drains it, every item exactly once.
TEST(DispatchConcurrencyTest, PoolWorkDeliversOnTheDrainingThread) {
    MainQueue main;
    std::vector<int> delivered;  // touched only on this thread
    std::set<std::thread::id> workers;
    std::mutex workersMutex;
    constexpr int kItems = 200;
    {
        ThreadPoolExecutor pool(3);
        for (int i = 0; i < kItems; ++i) {
            pool.async([&, i] {
                {
                    std::lock_guard lock(workersMutex);
                    workers.insert(std::this_thread::get_id());
                }
                main.async([&delivered, i] { delivered.push_back(i); });
            });
        }
        ASSERT_TRUE(main.runUntil([&] { return delivered.size() == kItems; }, std::chrono::seconds(30)));
    }
    std::set<int> unique(delivered.begin(), delivered.end());
    EXPECT_EQ(unique.size(), static_cast<std::size_t>(kItems));
    EXPECT_EQ(workers.count(std::this_thread::get_id()), 0u);
}

TEST(DispatchConcurrencyTest, PoolRunsQueuedWorkBeforeItIsDestroyed) {
    std::atomic<int> ran{0};
    {
        ThreadPoolExecutor pool(2);
        for (int i = 0; i < 50; ++i) pool.async([&] { ran.fetch_add(1); });
    }
    EXPECT_EQ(ran.load(), 50);
}

// Work that owns its pool may turn out to be the last owner; the pool then goes
// from one of its own threads, which must not try to join itself.
TEST(DispatchConcurrencyTest, PoolReleasedByItsOwnWorkGoesQuietly) {
    MainQueue main;
    bool destroyed = false;
    std::shared_ptr<ThreadPoolExecutor> pool(new ThreadPoolExecutor(2),
                                             [&main, &destroyed](ThreadPoolExecutor* p) {
                                                 delete p;
                                                 main.async([&destroyed] { destroyed = true; });
                                             });
    auto* raw = pool.get();
    raw->async([owner = std::move(pool)] {});  // the work item now holds the only reference
    ASSERT_TRUE(main.runUntil([&] { return destroyed; }, std::chrono::seconds(30)));
}

}  // namespace
}  // namespace qrv::platform
