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
      return tap(command.argument);
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

void Person::standStill() {
  phone_.player().standStill();
  if (phone_.player().isStanding()) phone_.setTimeScale(1);
}

void Person::walkOn() {
  if (phone_.player().isStanding()) phone_.setTimeScale(speed_);
  phone_.player().walkOn();
}

/// Opens the application, as a phone does, and shows what the library made of the tap.
void Person::tap(const std::string& number) {
  const auto which = text::toInteger(number);
  const auto request = which || number == "last" ? collector_.shown(which) : std::nullopt;
  if (!request) return collector_.note("host", "no notification #" + number + " has come up");
  phone_.application().moveTo(ApplicationState::active);
  const auto latest = [this]() -> std::optional<OrlanNotificationDetails> {
    const NotificationManager* manager = services_.notificationManager.ifBuilt();
    return manager == nullptr ? std::nullopt : manager->latest();
  };
  const auto before = latest();
  phone_.notifications().tap({*request});
  if (auto details = latest(); details && details != before) screen_.open(std::move(*details));
}

}  // namespace orlan::run
