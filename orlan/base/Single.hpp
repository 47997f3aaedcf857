#pragma once

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
    void operator()(Answer answer) const { state_->resolve(std::move(answer)); }

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

  /// Runs `pass` with the answer each time it passes to a subscriber, just before that subscriber.
  [[nodiscard]] Single passing(Handler pass) const {
    Single copy = *this;
    copy.pass_ = std::move(pass);
    return copy;
  }

  [[nodiscard]] Subscription subscribe(Handler handler) const {
    if (pass_) {
      handler = [pass = pass_, next = std::move(handler)](const Answer& answer) {
        pass(answer);
        next(answer);
      };
    }
    auto slot = std::make_shared<Slot>(Slot{std::move(handler)});
    bool ready = false;
    {
      const std::lock_guard lock(state_->mutex);
      ready = state_->answer.has_value();
      if (!ready) state_->slots.push_back(slot);
    }
    if (ready) {
      slot->handler(*state_->answer);
      return {};
    }
    return Subscription::onCancel([state = std::weak_ptr<State>(state_), slot] {
      if (const auto held = state.lock()) {
        const std::lock_guard lock(held->mutex);
        slot->cancelled = true;
      }
    });
  }

 private:
  struct Slot {
    Handler handler;
    bool cancelled = false;
  };
  struct State {
    std::mutex mutex;
    std::optional<Answer> answer;  // set once, then only read
    std::vector<std::shared_ptr<Slot>> slots;

    void resolve(Answer value) {
      std::vector<std::shared_ptr<Slot>> waiting;
      {
        const std::lock_guard lock(mutex);
        if (answer) return;
        answer.emplace(std::move(value));
        waiting = std::move(slots);
      }
      for (const auto& slot : waiting) {
        if (isLive(*slot)) slot->handler(*answer);
      }
    }
    bool isLive(const Slot& slot) {
      const std::lock_guard lock(mutex);
      return !slot.cancelled;
    }
  };

  explicit Single(std::shared_ptr<State> state) : state_(std::move(state)) {}

  std::shared_ptr<State> state_;
  Handler pass_;
};

}  // namespace orlan
