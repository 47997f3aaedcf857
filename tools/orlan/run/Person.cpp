#include "tools/orlan/run/Person.hpp"

namespace orlan::run {

void Person::perform(const Command& command) {
  switch (command.act) {
    case Act::background:
      return phone_.application().moveTo(ApplicationState::background);
    case Act::front:
      return phone_.application().moveTo(ApplicationState::active);
    case Act::stand:
      phone_.player().standStill();
      if (phone_.player().isStanding()) phone_.setTimeScale(1);
      return;
    case Act::walk:
      if (phone_.player().isStanding()) phone_.setTimeScale(speed_);
      return phone_.player().walkOn();
    case Act::quit:
      return onQuit_();
  }
}

}  // namespace orlan::run
