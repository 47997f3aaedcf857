#pragma once

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "orlan/base/Subscription.hpp"

namespace orlan {

/// A stream that never fails. `subscribe` may be called from any thread; values arrive on the thread that
/// emits them, in the order of subscription. The stream may be destroyed before its subscriptions.
template <class T>
class Publisher {
 public:
  using Handler = std::function<void(const T&)>;
  virtual ~Publisher() = default;
  [[nodiscard]] virtual Subscription subscribe(Handler handler) = 0;
};

/// Emits what it is sent to those who are subscribed at that moment. A handler may cancel itself or others
/// and may subscribe anew while a value is emitted: who has been cancelled hears no more, who came during an
/// emission hears from the next one on. No lock is held while a handler runs.
template <class T>
class Subject : public Publisher<T> {
 public:
  using typename Publisher<T>::Handler;

  [[nodiscard]] Subscription subscribe(Handler handler) override {
    auto slot = std::make_shared<Slot>(std::move(handler));
    {
      const std::lock_guard lock(list_->mutex);
      list_->slots.push_back(slot);
    }
    return Subscription::onCancel([list = std::weak_ptr<List>(list_), slot] {
      slot->live = false;
      if (const auto held = list.lock()) {
        const std::lock_guard lock(held->mutex);
        std::erase(held->slots, slot);
      }
    });
  }

  void send(const T& value) {
    std::vector<std::shared_ptr<Slot>> now;
    {
      const std::lock_guard lock(list_->mutex);
      now = list_->slots;
    }
    for (const auto& slot : now) {
      if (slot->live) slot->handler(value);
    }
  }

 private:
  struct Slot {
    explicit Slot(Handler h) : handler(std::move(h)) {}
    Handler handler;
    std::atomic<bool> live = true;
  };
  struct List {
    std::mutex mutex;
    std::vector<std::shared_ptr<Slot>> slots;
  };
  std::shared_ptr<List> list_ = std::make_shared<List>();
};

/// A stream with a current value: a new subscriber hears it at once, then every change. `send` and
/// `subscribe` belong to one thread.
template <class T>
class CurrentValue : public Publisher<T> {
 public:
  using typename Publisher<T>::Handler;

  explicit CurrentValue(T initial = {}) : value_(std::move(initial)) {}

  /// Sets the value and emits it, also when it equals the one before.
  void send(T value) {
    value_ = value;
    changes_.send(value);
  }

  [[nodiscard]] Subscription subscribe(Handler handler) override {
    // Subscribed first: what the handler itself sends when it hears the current value reaches it too.
    auto shared = std::make_shared<Handler>(std::move(handler));
    Subscription changes = changes_.subscribe([shared](const T& value) { (*shared)(value); });
    (*shared)(T(value_));
    return changes;
  }

 private:
  T value_;
  Subject<T> changes_;
};

}  // namespace orlan
