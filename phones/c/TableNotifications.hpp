#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "orlan/c/phone.h"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/c/Tasks.hpp"
#include "phones/common/ApplicationModel.hpp"

namespace orlan::c {

/// The host's notification centre. Answers may come on any thread and at any time; they are handed on by the
/// main loop.
class TableNotifications final : public NotificationCenter {
 public:
  using Answer = std::function<void(const Result<std::int64_t>&)>;

  TableNotifications(const orlan_notification_functions& table, MainLoop& main, std::shared_ptr<Tasks> ids)
      : table_(table), main_(main), ids_(std::move(ids)) {}

  void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) override;
  [[nodiscard]] std::shared_ptr<NotificationCenterDelegate> delegate() const override;
  void add(NotificationRequest request, std::function<void(Result<void>)> done) override;
  void requestAuthorization(std::uint32_t options, std::function<void(Result<bool>)> done) override;
  void authorizationStatus(std::function<void(NotificationAuthorization)> done) override;

  /// False when nobody waits for it.
  bool answer(orlan_id question, Result<std::int64_t> outcome);

  void present(const NotificationRequest& request, std::function<void(std::uint32_t)> shown);
  void tap(const NotificationResponse& response, std::function<void()> done);

 private:
  /// Asks `function`; where the host has none the answer is `otherwise`.
  template <class Function, class... Args>
  void pose(Answer answered, std::int64_t otherwise, Function* function, Args... args);

  const orlan_notification_functions table_;
  MainLoop& main_;
  const std::shared_ptr<Tasks> ids_;
  std::weak_ptr<NotificationCenterDelegate> delegate_;  // main thread
  std::mutex mutex_;
  std::map<orlan_id, Answer> questions_;
};

/// The host's life cycle. Main thread.
class TableApplication final : public Application {
 public:
  TableApplication(const orlan_application_functions& table, MainLoop& main)
      : table_(table), model_(main, nobody_, ApplicationState::active) {}

  [[nodiscard]] ApplicationState state() const override;
  [[nodiscard]] Subscription observe(ApplicationSignal signal, std::function<void()> handler) override {
    return model_.observe(signal, std::move(handler));
  }
  void registerForRemoteNotifications() override;

  /// A `Misuse` when there is no such signal or state, or the host has a state of its own.
  void signal(std::int32_t signal);
  void moveTo(std::int32_t state);

 private:
  const orlan_application_functions table_;
  phone::PhoneObserver nobody_;
  phone::ApplicationModel model_;  // its state counts where the host has none
};

}  // namespace orlan::c
