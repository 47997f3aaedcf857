#include "tools/orlan/run/Person.hpp"

#include "orlan/base/text.hpp"

namespace orlan::run {

void Person::perform(const Command& command) {
  switch (command.act) {
    case Act::background:
      return phone_.application().moveTo(ApplicationState::background);
    case Act::front:
      return phone_.application().moveTo(ApplicationState::active);
    case Act::stand:
      return standStill();
    case Act::walk:
      return walkOn();
    case Act::tap:
      standStill();  // who looks at a notification
      return tapNumber(command.argument);
    case Act::answer:
      return screen_.answer(command.argument);
    case Act::link:
      return screen_.openLink();
    case Act::media:
      return screen_.openMedia();
    case Act::close:
      return screen_.close();
    case Act::quit:
      return onQuit_();
  }
}

void Person::perform(const simulate::Step& step) {
  step_ = step.call;
  collector_.note("script", step_);
  std::get<simulate::ActOfAPerson>(step.action)(*this);
}

void Person::standStill() {
  phone_.player().standStill();
  if (phone_.player().isStanding()) phone_.setTimeScale(1);
}

void Person::walkOn() {
  if (phone_.player().isStanding()) phone_.setTimeScale(speed_);
  phone_.player().walkOn();
}

void Person::tapNumber(const std::string& number) {
  const auto which = text::toInteger(number).value_or(0);  // 1 is the first
  if (const auto request = scheduled(static_cast<std::size_t>(which - 1))) tap({*request});
}

std::optional<NotificationRequest> Person::scheduled(std::size_t number) {
  auto request = collector_.shown(number + 1);
  if (!request) collector_.note("host", "no notification #" + std::to_string(number + 1) + " has come up");
  return request;
}

/// Opens the application, as a phone does, and shows what the library made of the tap.
void Person::tap(const NotificationResponse& response) {
  phone_.application().moveTo(ApplicationState::active);
  const auto latest = [this]() -> std::optional<OrlanNotificationDetails> {
    const NotificationManager* manager = services_.notificationManager.ifBuilt();
    return manager == nullptr ? std::nullopt : manager->latest();
  };
  const auto before = latest();
  phone_.notifications().tap(response);
  if (auto details = latest(); details && details != before) screen_.open(std::move(*details));
}

simulate::Scene::Outcome Person::outcome() {
  return [&collector = collector_, waiting = waiting_, step = step_](const Result<json::Value>& outcome) {
    collector.note("script", step + ": " + (outcome ? json::print(*outcome) : outcome.error().description));
  };
}

}  // namespace orlan::run
