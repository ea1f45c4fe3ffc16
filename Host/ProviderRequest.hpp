#pragma once
// Asking a timeline provider as the widget host does, from a program's main
// thread: start the request, then run the main queue until the completion has
// come, until nothing is left that could call it, or until the wait is over.
// A provider may answer from the main queue or from any other thread, once or
// never. `main` must outlive a provider that may answer late (the process's
// main queue does).
#include <algorithm>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/timeline/TimelineProvider.hpp"

namespace qrv::host {

// How often the waiting loop looks whether anything could still answer.
inline constexpr std::chrono::milliseconds kIdleCheckInterval{5};

// Runs `main` until `answered()` holds, until nothing can answer any more, or
// until `wait` has passed; answers `answered()`. A provider works only on its
// two queues: once `background` and then `main` are both idle without an
// answer, every piece of its work has run without calling the completion, and
// nothing is left that could (a provider that finds no record never answers).
// `wait` stays the bound for one that is still working. A null `background`
// cannot be watched: then only the answer or the wait ends the loop.
template <class Predicate>
bool runUntilAnswered(platform::MainQueue& main, const platform::Executor* background, Predicate answered,
                      std::chrono::milliseconds wait) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + wait;
    for (;;) {
        const auto now = Clock::now();
        if (now >= deadline) return answered();
        const auto slice =
            background ? std::min<Clock::duration>(kIdleCheckInterval, deadline - now) : deadline - now;
        if (main.runUntil(answered, slice)) return true;
        // The background first: its work may queue on `main` before it goes idle.
        if (background && background->idle() && main.idle()) return answered();
    }
}

namespace detail {
// The answer slot a completion fills. Shared, because a provider may still call
// back after the host has stopped waiting.
template <class Answer>
struct AnswerSlot {
    std::mutex mutex;
    std::optional<Answer> answer;

    bool filled() {
        std::lock_guard lock(mutex);
        return answer.has_value();
    }
};

template <class Answer, class Start>
std::optional<Answer> await(Start start, platform::MainQueue& main, const platform::Executor* background,
                            std::chrono::milliseconds wait) {
    auto slot = std::make_shared<AnswerSlot<Answer>>();
    start([slot, &main](Answer answer) {
        {
            std::lock_guard lock(slot->mutex);
            if (slot->answer) return;  // the host takes the first answer only
            slot->answer = std::move(answer);
        }
        // An answer from another thread must wake the waiting loop.
        main.async([] {});
    });
    runUntilAnswered(
        main, background, [&] { return slot->filled(); }, wait);
    std::lock_guard lock(slot->mutex);
    return std::move(slot->answer);
}
}  // namespace detail

template <class Entry>
std::optional<Entry> askSnapshot(const platform::TimelineProvider<Entry>& provider,
                                 const platform::TimelineProviderContext& context,
                                 std::chrono::milliseconds wait, const platform::Executor* background,
                                 platform::MainQueue& main = *platform::mainQueue()) {
    return detail::await<Entry>(
        [&](auto completion) { provider.getSnapshot(context, std::move(completion)); }, main, background,
        wait);
}

template <class Entry>
std::optional<platform::Timeline<Entry>> askTimeline(const platform::TimelineProvider<Entry>& provider,
                                                     const platform::TimelineProviderContext& context,
                                                     std::chrono::milliseconds wait,
                                                     const platform::Executor* background,
                                                     platform::MainQueue& main = *platform::mainQueue()) {
    return detail::await<platform::Timeline<Entry>>(
        [&](auto completion) { provider.getTimeline(context, std::move(completion)); }, main, background,
        wait);
}

}  // namespace qrv::host
