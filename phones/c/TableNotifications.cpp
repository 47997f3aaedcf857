#include "phones/c/TableNotifications.hpp"

#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Notifications.hpp"

namespace orlan::c {

void TableNotifications::setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) {
  main_.assertCurrent();
  delegate_ = std::move(delegate);
}

std::shared_ptr<NotificationCenterDelegate> TableNotifications::delegate() const {
  main_.assertCurrent();
  return delegate_.lock();
}

template <class Function, class... Args>
void TableNotifications::pose(Answer answered, std::int64_t otherwise, Function* function, Args... args) {
  const orlan_id id = ids_->nextId();
  {
    const std::lock_guard lock(mutex_);
    questions_.emplace(id, std::move(answered));
  }
  if (function == nullptr) {
    answer(id, otherwise);
  } else {
    ask(function, table_.context, args..., id);
  }
}

bool TableNotifications::answer(orlan_id question, Result<std::int64_t> outcome) {
  std::map<orlan_id, Answer>::node_type node;
  {
    const std::lock_guard lock(mutex_);
    node = questions_.extract(question);
  }
  if (node.empty()) return false;
  main_.async([answer = std::move(node.mapped()), outcome = std::move(outcome)] { answer(outcome); });
  return true;
}

void TableNotifications::add(NotificationRequest request, std::function<void(Result<void>)> done) {
  const auto answered = [done = std::move(done)](const Result<std::int64_t>& outcome) {
    done(outcome ? Result<void>() : Result<void>(Unexpected(outcome.error())));
  };
  const LentNotification out(request);
  pose(answered, 0, table_.add, out.get());
}

void TableNotifications::requestAuthorization(std::uint32_t options, std::function<void(Result<bool>)> done) {
  const auto answered = [done = std::move(done)](const Result<std::int64_t>& outcome) {
    done(outcome ? Result<bool>(*outcome != 0) : Result<bool>(Unexpected(outcome.error())));
  };
  pose(answered, 1, table_.request_authorization, options);
}

void TableNotifications::authorizationStatus(std::function<void(NotificationAuthorization)> done) {
  const auto answered = [done = std::move(done)](const Result<std::int64_t>& outcome) {
    const auto known = outcome ? fromRawValue<NotificationAuthorization>(*outcome) : std::nullopt;
    done(known.value_or(NotificationAuthorization::notDetermined));
  };
  pose(answered, ORLAN_NOTIFICATIONS_AUTHORIZED, table_.authorization);
}

void TableNotifications::present(const NotificationRequest& request,
                                 std::function<void(std::uint32_t)> shown) {
  if (const auto listener = delegate()) {
    listener->willPresent(request, std::move(shown));
  } else {
    shown(0);
  }
}

void TableNotifications::tap(const NotificationResponse& response, std::function<void()> done) {
  if (const auto listener = delegate()) {
    listener->didReceive(response, std::move(done));
  } else {
    done();
  }
}

ApplicationState TableApplication::state() const {
  if (table_.state == nullptr) return model_.state();
  const auto state = ask(table_.state, table_.context);
  return state >= ORLAN_STATE_ACTIVE && state <= ORLAN_STATE_BACKGROUND ? static_cast<ApplicationState>(state)
                                                                        : ApplicationState::background;
}

void TableApplication::registerForRemoteNotifications() {
  ask(table_.register_for_push, table_.context);
}

void TableApplication::signal(std::int32_t signal) {
  if (signal < ORLAN_DID_ENTER_BACKGROUND || signal > ORLAN_WILL_RESIGN_ACTIVE) {
    throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such signal"};
  }
  model_.raise(static_cast<ApplicationSignal>(signal));
}

void TableApplication::moveTo(std::int32_t state) {
  if (table_.state != nullptr) throw Misuse{ORLAN_INVALID_ARGUMENT, "the phone has a state of its own"};
  if (state < ORLAN_STATE_ACTIVE || state > ORLAN_STATE_BACKGROUND) {
    throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such state"};
  }
  model_.moveTo(static_cast<ApplicationState>(state));
}

}  // namespace orlan::c
