#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace orlan {

/// A slot whose object is made at first use, because when a service first comes to life is visible from
/// outside (a start time, a file, a log line). Any thread may use it; the object is made once.
/// Neither the builder nor a hook may use its own slot.
template <class T>
class Lazy {
 public:
  using Builder = std::function<std::shared_ptr<T>()>;

  explicit Lazy(Builder build) : build_(std::move(build)) {}
  Lazy(const Lazy&) = delete;
  Lazy& operator=(const Lazy&) = delete;

  T& operator*() { return get(); }
  T* operator->() { return &get(); }

  /// The object if somebody has used it already; never makes it.
  [[nodiscard]] T* ifBuilt() const { return ready_.load(std::memory_order_acquire); }

  /// Runs `hook` right after the object is made, before its first user sees it. Register before first use.
  void onBuilt(std::function<void(T&)> hook) { hooks_.push_back(std::move(hook)); }

 private:
  T& get() {
    if (T* object = ifBuilt()) return *object;
    const std::lock_guard lock(mutex_);
    if (T* object = ifBuilt()) return *object;
    object_ = build_();
    for (const auto& hook : hooks_) hook(*object_);
    ready_.store(object_.get(), std::memory_order_release);
    return *object_;
  }

  Builder build_;
  std::vector<std::function<void(T&)>> hooks_;
  std::mutex mutex_;
  std::shared_ptr<T> object_;
  std::atomic<T*> ready_ = nullptr;
};

}  // namespace orlan
