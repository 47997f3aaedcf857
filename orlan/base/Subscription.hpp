#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orlan {

/// Something that stops when it is destroyed: a subscription, a timer, a request on its way. A port derives
/// its handles from this.
class Cancellable {
 public:
  Cancellable() = default;
  Cancellable(const Cancellable&) = delete;
  Cancellable& operator=(const Cancellable&) = delete;
  virtual ~Cancellable() = default;
};

/// Owns a `Cancellable`. Move-only; destroying it, replacing it or `cancel()` ends what it stands for.
/// An empty one stands for nothing. May be cancelled from inside the very callback that it keeps alive.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::unique_ptr<Cancellable> handle) : handle_(std::move(handle)) {}

  /// A subscription whose end runs `cancel`, once.
  static Subscription onCancel(std::function<void()> cancel) {
    class Callback final : public Cancellable {
     public:
      explicit Callback(std::function<void()> run) : run_(std::move(run)) {}
      ~Callback() override { run_(); }

     private:
      std::function<void()> run_;
    };
    return Subscription(std::make_unique<Callback>(std::move(cancel)));
  }

  void cancel() {
    const auto ending = std::move(handle_);  // cleared first: the end may look at this subscription again
  }
  explicit operator bool() const { return handle_ != nullptr; }

 private:
  std::unique_ptr<Cancellable> handle_;
};

/// A set of subscriptions that end together. `bag = {}` ends them all.
class SubscriptionBag {
 public:
  void add(Subscription subscription) { held_.push_back(std::move(subscription)); }
  [[nodiscard]] bool empty() const { return held_.empty(); }

 private:
  std::vector<Subscription> held_;
};

}  // namespace orlan
