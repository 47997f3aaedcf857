#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::phone {

struct NotificationSettings {
  NotificationAuthorization authorization = NotificationAuthorization::authorized;
  Result<bool> answer = true;    // what the person says when asked; an error: the centre cannot ask
  std::optional<Error> refusal;  // every scheduling attempt is refused with this
};

/// A phone's notification centre: keeps what is scheduled, and when it is due asks the delegate (application
/// active) or delivers it. `add`, `requestAuthorization` and `authorizationStatus` may be called from any
/// thread and answer on the next turn of the main loop; everything else belongs to the main thread.
///
/// A notification that comes up with no delegate in place, or while the application is not active, is
/// delivered and tells nobody.
class LocalNotificationCenter final : public NotificationCenter {
 public:
  LocalNotificationCenter(MainLoop& main, const Application& application, PhoneObserver& observer,
                          NotificationSettings settings = {});
  ~LocalNotificationCenter() override;

  void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) override;
  [[nodiscard]] std::shared_ptr<NotificationCenterDelegate> delegate() const override;
  void add(NotificationRequest request, std::function<void(Result<void>)> done) override;

  /// The person is asked once: the first request gets the answer of the settings, which becomes the status
  /// (authorized or denied); later ones get what the status says by then. An error changes nothing and may
  /// come any number of times.
  void requestAuthorization(std::uint32_t options, std::function<void(Result<bool>)> done) override;
  void authorizationStatus(std::function<void(NotificationAuthorization)> done) override;

  /// The person changed their mind in the phone's settings.
  void setAuthorization(NotificationAuthorization status);

  /// From now on every scheduling attempt is refused with this error, or none is.
  void setRefusal(std::optional<Error> refusal);

  /// A notification arrives from outside while the application is in front.
  void present(const NotificationRequest& request);

  /// The person taps a notification.
  void tap(const NotificationResponse& response);

  /// The process ends: its delegate and its unanswered questions are forgotten, what is scheduled stays.
  void endProcess();

 private:
  void schedule(const NotificationRequest& request, const std::function<void(Result<void>)>& done);
  [[nodiscard]] Result<bool> ask();
  void deliverDue(const std::string& identifier);
  void onMain(std::function<void()> task);
  void answerSoon(std::function<void()> answer);

  struct Pending {
    NotificationRequest request;
    Subscription timer;
  };

  MainLoop& main_;
  const Application& application_;
  PhoneObserver& observer_;
  NotificationSettings settings_;
  bool asked_ = false;
  std::weak_ptr<NotificationCenterDelegate> delegate_;
  std::map<std::string, Pending, std::less<>> pending_;
  std::unique_ptr<Lifetime> process_;
  Lifetime lifetime_;
};

}  // namespace orlan::phone
