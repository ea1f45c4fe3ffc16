#pragma once
// Asking a timeline provider as the widget host does, from a program's main
// thread: start the request, then run the main queue until the completion has
// come or the wait is over. A provider may answer from the main queue or from
// any other thread, once or never. `main` must outlive a provider that may
// answer late (the process's main queue does).
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/timeline/TimelineProvider.hpp"

namespace qrv::host {

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
std::optional<Answer> await(Start start, platform::MainQueue& main, std::chrono::milliseconds wait) {
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
    main.runUntil([&] { return slot->filled(); }, wait);
    std::lock_guard lock(slot->mutex);
    return std::move(slot->answer);
}
}  // namespace detail

template <class Entry>
std::optional<Entry> askSnapshot(const platform::TimelineProvider<Entry>& provider,
                                 const platform::TimelineProviderContext& context,
                                 std::chrono::milliseconds wait,
                                 platform::MainQueue& main = *platform::mainQueue()) {
    return detail::await<Entry>(
        [&](auto completion) { provider.getSnapshot(context, std::move(completion)); }, main, wait);
}

template <class Entry>
std::optional<platform::Timeline<Entry>> askTimeline(const platform::TimelineProvider<Entry>& provider,
                                                     const platform::TimelineProviderContext& context,
                                                     std::chrono::milliseconds wait,
                                                     platform::MainQueue& main = *platform::mainQueue()) {
    return detail::await<platform::Timeline<Entry>>(
        [&](auto completion) { provider.getTimeline(context, std::move(completion)); }, main, wait);
}

}  // namespace qrv::host
