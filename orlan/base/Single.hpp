#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/Subscription.hpp"

namespace orlan {

/// The future answer of one operation: exactly one value or one error. The work has begun when you hold one;
/// subscribing only listens. An answer that is already there is delivered inside `subscribe`, any other on
/// the thread that resolves it (the library resolves on the main thread). Copies share the answer.
template <class T>
class Single {
  struct State;

 public:
  using Answer = Result<T>;
  using Handler = std::function<void(const Answer&)>;

  /// Resolves the `Single` it was made with. Only the first call counts. Copyable; dropping it unresolved
  /// leaves the subscribers without an answer.
  class Resolver {
   public:
    void operator()(Answer answer) const {
      const auto state = state_;  // a subscriber may destroy this resolver
      state->resolve(std::move(answer));
    }

   private:
    friend class Single;
    explicit Resolver(std::shared_ptr<State> state) : state_(std::move(state)) {}
    std::shared_ptr<State> state_;
  };

  static std::pair<Single, Resolver> pending() {
    auto state = std::make_shared<State>();
    return {Single(state), Resolver(state)};
  }

  /// Already answered.
  static Single of(Answer answer) {
    auto state = std::make_shared<State>();
    state->answer.emplace(std::move(answer));
    return Single(std::move(state));
  }

  /// Runs `pass` with the answer each time it passes to a subscriber, just before that subscriber; of
  /// several, the one added first comes first.
  [[nodiscard]] Single passing(Handler pass) const {
    Single copy = *this;
    copy.passes_.push_back(std::move(pass));
    return copy;
  }

  [[nodiscard]] Subscription subscribe(Handler handler) const {
    const auto state = state_;  // the subscriber may destroy this object
    auto slot = std::make_shared<Slot>(passes_, std::move(handler));
    if (!state->keep(slot)) {
      slot->deliver(*state->answer);
      return {};
    }
    return Subscription::onCancel([held = std::weak_ptr<State>(state), slot] {
      slot->live = false;
      if (const auto still = held.lock()) still->drop(slot);
    });
  }

 private:
  struct Slot {
    Slot(std::vector<Handler> before, Handler last) : handlers(std::move(before)) {
      handlers.push_back(std::move(last));
    }
    void deliver(const Answer& answer) const {
      for (const auto& handler : handlers) {
        if (live) handler(answer);
      }
    }
    std::vector<Handler> handlers;
    std::atomic<bool> live = true;
  };

  struct State {
    std::mutex mutex;
    std::optional<Answer> answer;  // set once, then only read
    std::vector<std::shared_ptr<Slot>> slots;

    /// False when the answer is there already.
    bool keep(const std::shared_ptr<Slot>& slot) {
      const std::lock_guard lock(mutex);
      if (answer) return false;
      slots.push_back(slot);
      return true;
    }
    void drop(const std::shared_ptr<Slot>& slot) {
      const std::lock_guard lock(mutex);
      std::erase(slots, slot);
    }
    void resolve(Answer value) {
      std::vector<std::shared_ptr<Slot>> waiting;
      {
        const std::lock_guard lock(mutex);
        if (answer) return;
        answer.emplace(std::move(value));
        waiting = std::move(slots);
      }
      for (const auto& slot : waiting) slot->deliver(*answer);
    }
  };

  explicit Single(std::shared_ptr<State> state) : state_(std::move(state)) {}

  std::shared_ptr<State> state_;
  std::vector<Handler> passes_;
};

}  // namespace orlan
