#include "phones/common/LocalNotificationCenter.hpp"

#include <utility>

namespace orlan::phone {

namespace {

bool mayShow(NotificationAuthorization status) {
  return status == NotificationAuthorization::authorized ||
         status == NotificationAuthorization::provisional || status == NotificationAuthorization::ephemeral;
}

}  // namespace

LocalNotificationCenter::LocalNotificationCenter(MainLoop& main, const Application& application,
                                                 PhoneObserver& observer, NotificationSettings settings)
    : main_(main),
      application_(application),
      observer_(observer),
      settings_(std::move(settings)),
      process_(std::make_unique<Lifetime>()) {}

LocalNotificationCenter::~LocalNotificationCenter() = default;

void LocalNotificationCenter::setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) {
  main_.assertCurrent();
  delegate_ = std::move(delegate);
}

std::shared_ptr<NotificationCenterDelegate> LocalNotificationCenter::delegate() const {
  main_.assertCurrent();
  return delegate_.lock();
}

void LocalNotificationCenter::add(NotificationRequest request, std::function<void(Result<void>)> done) {
  onMain([this, request = std::move(request), done = std::move(done)] { schedule(request, done); });
}

void LocalNotificationCenter::requestAuthorization(std::uint32_t /*options*/,
                                                   std::function<void(Result<bool>)> done) {
  answerSoon([this, done = std::move(done)] { done(ask()); });
}

void LocalNotificationCenter::authorizationStatus(std::function<void(NotificationAuthorization)> done) {
  answerSoon([this, done = std::move(done)] { done(settings_.authorization); });
}

void LocalNotificationCenter::setAuthorization(NotificationAuthorization status) {
  main_.assertCurrent();
  settings_.authorization = status;
}

void LocalNotificationCenter::setRefusal(std::optional<Error> refusal) {
  main_.assertCurrent();
  settings_.refusal = std::move(refusal);
}

void LocalNotificationCenter::present(const NotificationRequest& request) {
  main_.assertCurrent();
  const auto listener = delegate();
  if (!listener) {
    observer_.notificationDelivered(request);
    return;
  }
  auto answer = [this, request, alive = lifetime_.token(), process = process_->token(),
                 answered = std::make_shared<bool>(false)](std::uint32_t options) {
    if (!alive || !process || std::exchange(*answered, true)) return;
    observer_.notificationPresented(request, options);
  };
  listener->willPresent(request, std::move(answer));
}

void LocalNotificationCenter::tap(const NotificationResponse& response) {
  main_.assertCurrent();
  observer_.notificationTapped(response);
  if (const auto listener = delegate()) listener->didReceive(response, [] {});
}

void LocalNotificationCenter::endProcess() {
  main_.assertCurrent();
  delegate_.reset();
  process_ = std::make_unique<Lifetime>();
}

void LocalNotificationCenter::schedule(const NotificationRequest& request,
                                       const std::function<void(Result<void>)>& done) {
  if (settings_.refusal) {
    observer_.notificationRefused(request, *settings_.refusal);
    answerSoon([done, why = *settings_.refusal] { done(Unexpected(why)); });
    return;
  }
  pending_.insert_or_assign(
      request.identifier,
      Pending{request, main_.after(request.delay,
                                   [this, identifier = request.identifier] { deliverDue(identifier); })});
  observer_.notificationScheduled(request);
  answerSoon([done] { done({}); });
}

Result<bool> LocalNotificationCenter::ask() {
  if (!settings_.answer.has_value()) return settings_.answer;
  if (!std::exchange(asked_, true)) {
    settings_.authorization =
        *settings_.answer ? NotificationAuthorization::authorized : NotificationAuthorization::denied;
  }
  return mayShow(settings_.authorization);
}

void LocalNotificationCenter::deliverDue(const std::string& identifier) {
  const auto due = pending_.extract(identifier);
  if (due.empty()) return;
  if (application_.state() == ApplicationState::active) {
    present(due.mapped().request);
  } else {
    observer_.notificationDelivered(due.mapped().request);
  }
}

void LocalNotificationCenter::onMain(std::function<void()> task) {
  if (main_.isCurrent()) {
    task();
  } else {
    main_.async([alive = lifetime_.token(), process = process_->token(), task = std::move(task)] {
      if (alive && process) task();
    });
  }
}

void LocalNotificationCenter::answerSoon(std::function<void()> answer) {
  main_.async([alive = lifetime_.token(), process = process_->token(), answer = std::move(answer)] {
    if (alive && process) answer();
  });
}

}  // namespace orlan::phone
