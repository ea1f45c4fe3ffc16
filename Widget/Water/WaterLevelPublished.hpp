#pragma once
// A published value: the current value plus the callbacks that want to hear
// when it is assigned. The glass view subscribes to the water level model's
// height so that it redraws (and animates) when the model recomputes it.
//
// Rules:
//  - subscribe() calls the new callback once with the current value at once,
//    then after every assignment with the new value (also when the new value
//    equals the old one, as every assignment is an event);
//  - a callback is called after the value has been stored, so reading the
//    value from inside the callback gives the new one;
//  - a subscription ends when its Subscription object is cancelled or
//    destroyed; it may outlive the published value (it then does nothing);
//  - callbacks may subscribe or cancel while being notified: the callbacks
//    notified for one assignment are those subscribed when it started, minus
//    those cancelled before their turn.
// Not synchronised: like the views it feeds, it is used on the main thread.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace qrv::widget {

template <class T>
class Published {
    struct State {
        std::map<std::uint64_t, std::shared_ptr<std::function<void(const T&)>>> callbacks;
        std::uint64_t nextId = 0;
    };

  public:
    using Callback = std::function<void(const T&)>;

    class [[nodiscard]] Subscription {
      public:
        Subscription() = default;
        Subscription(Subscription&& other) noexcept
            : state_(std::exchange(other.state_, {})), id_(other.id_) {}
        Subscription& operator=(Subscription&& other) noexcept {
            if (this != &other) {
                cancel();
                state_ = std::exchange(other.state_, {});
                id_ = other.id_;
            }
            return *this;
        }
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;
        ~Subscription() { cancel(); }

        void cancel() {
            if (auto state = state_.lock()) state->callbacks.erase(id_);
            state_.reset();
        }
        // True until cancelled, and while the published value exists.
        bool isActive() const {
            auto state = state_.lock();
            return state && state->callbacks.contains(id_);
        }

      private:
        friend class Published;
        Subscription(std::weak_ptr<State> state, std::uint64_t id) : state_(std::move(state)), id_(id) {}
        std::weak_ptr<State> state_;
        std::uint64_t id_ = 0;
    };

    explicit Published(T initial = T{}) : value_(std::move(initial)) {}
    // The subscribers belong to this value; a copy would not know them.
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& value() const { return value_; }

    void set(T newValue) {
        value_ = std::move(newValue);
        std::vector<std::pair<std::uint64_t, std::shared_ptr<Callback>>> snapshot(state_->callbacks.begin(),
                                                                                  state_->callbacks.end());
        for (const auto& [id, callback] : snapshot) {
            // Skip a callback that an earlier one cancelled.
            if (!state_->callbacks.contains(id)) continue;
            (*callback)(value_);
        }
    }

    Subscription subscribe(Callback callback) {
        const auto id = state_->nextId++;
        auto shared = std::make_shared<Callback>(std::move(callback));
        state_->callbacks.emplace(id, shared);
        (*shared)(value_);
        return Subscription(state_, id);
    }

    std::size_t subscriberCount() const { return state_->callbacks.size(); }

  private:
    T value_;
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace qrv::widget
