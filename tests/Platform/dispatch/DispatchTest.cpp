#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/dispatch/ManualExecutor.hpp"

namespace qrv::platform {
namespace {

// Both single-thread queues keep order, run nothing on async, and run work that
// queued work adds after what was already waiting.
template <class Queue>
void expectOrderedRunning(Queue& queue, bool (Queue::*step)()) {
    std::string trace;
    queue.async([&] {
        trace += 'a';
        queue.async([&] { trace += 'c'; });
    });
    queue.async([&] { trace += 'b'; });
    EXPECT_EQ(trace, "");
    EXPECT_EQ(queue.pending(), 2u);
    EXPECT_TRUE((queue.*step)());
    EXPECT_EQ(trace, "a");
    EXPECT_EQ(queue.drain(), 2u);
    EXPECT_EQ(trace, "abc");
    EXPECT_FALSE((queue.*step)());
    EXPECT_EQ(queue.pending(), 0u);
}

TEST(DispatchTest, ManualExecutorRunsInOrderOnlyWhenTold) {
    ManualExecutor executor;
    expectOrderedRunning(executor, &ManualExecutor::runNext);
}

TEST(DispatchTest, MainQueueRunsInOrderOnlyWhenDrained) {
    MainQueue queue;
    expectOrderedRunning(queue, &MainQueue::runOnce);
}

TEST(DispatchTest, MainQueueRunUntilStopsWhenDoneOrOutOfWork) {
    MainQueue queue;
    int ran = 0;
    for (int i = 0; i < 3; ++i) queue.async([&] { ++ran; });
    EXPECT_TRUE(queue.runUntil([&] { return ran == 2; }, std::chrono::seconds(5)));
    EXPECT_EQ(queue.pending(), 1u);  // stops as soon as the condition holds
    EXPECT_FALSE(queue.runUntil([&] { return ran == 5; }, std::chrono::seconds(0)));
    EXPECT_EQ(ran, 3);
}

}  // namespace
}  // namespace qrv::platform
