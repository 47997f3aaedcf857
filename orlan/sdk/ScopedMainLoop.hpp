#pragma once

#include <memory>
#include <utility>

#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// The phone's main loop as the library sees it: what was posted through it dies with it, so that nothing
/// runs on behalf of a library that is gone, and what runs keeps the library alive until it returns.
/// Destroyed on the main thread; the phone's loop outlives it.
class ScopedMainLoop final : public MainLoop {
 public:
  explicit ScopedMainLoop(MainLoop& phone) : phone_(phone) {}

  /// What turns keep alive. Once, before anybody uses this loop.
  void setOwner(std::weak_ptr<const void> owner) { owner_ = std::move(owner); }

  /// From now on nothing runs, whoever posts it.
  void close() { open_.reset(); }
  [[nodiscard]] bool isOpen() const override { return open_ != nullptr; }

  void async(std::function<void()> task) override { phone_.async(scoped(std::move(task))); }
  [[nodiscard]] bool isCurrent() const override { return phone_.isCurrent(); }
  [[nodiscard]] Subscription after(Duration delay, std::function<void()> task) override {
    return phone_.after(delay, scoped(std::move(task)));
  }
  [[nodiscard]] Subscription every(Duration interval, std::function<void()> task) override {
    return phone_.every(interval, scoped(std::move(task)));
  }

 private:
  void confinementBroken() const override { phone_.assertCurrent(); }
  Turn keepAlive() override { return owner_.lock(); }
  std::function<void()> scoped(std::function<void()> task) const;

  MainLoop& phone_;
  std::weak_ptr<const void> owner_;
  std::shared_ptr<const char> open_ = std::make_shared<const char>('\0');
  std::weak_ptr<const char> isOpen_ = open_;  // never changes, so any thread may copy it
};

}  // namespace orlan
