#include "phones/simulated/SimulatedPhone.hpp"

#include <utility>

namespace orlan::sim {

SimulatedPhone::SimulatedPhone(World& world, PhoneSettings settings)
    : mainContext_(std::make_shared<QueueContext>(QueueContext{"main", true})),
      system_(world.scheduler(), mainContext_),
      main_(world.scheduler(), mainContext_),
      queues_(world.scheduler()),
      clock_(world, std::move(settings.offsetFromUtc)),
      random_(world.nextSeed()),
      store_(observers_, settings.store),
      files_(observers_, settings.files, settings.keepsAppended),
      http_(world.scheduler(), observers_),
      device_(std::move(settings.device)),
      output_(observers_),
      application_(system_, observers_, settings.application),
      locations_(system_, observers_, settings.location),
      notifications_(system_, application_, observers_, std::move(settings.notifications)) {
  observers_.add(scheduled_);
}

SimulatedPhone::~SimulatedPhone() = default;

Platform SimulatedPhone::platform() {
  return {main_,      queues_,        clock_,       random_, store_,  files_,  http_,
          locations_, notifications_, application_, device_, device_, output_, output_};
}

Location SimulatedPhone::fixAt(Coordinate coordinate, double accuracy) const {
  return {coordinate, accuracy, clock_.now()};
}

void SimulatedPhone::moveTo(Coordinate coordinate, double accuracy) {
  const Location fix = fixAt(coordinate, accuracy);
  locations_.deliver({&fix, 1});
}

void SimulatedPhone::relaunch(ApplicationState state) {
  main_.assertCurrent();
  main_.clear();
  http_.endProcess();
  locations_.endProcess();
  notifications_.endProcess();
  application_.restart(state);
}

}  // namespace orlan::sim
