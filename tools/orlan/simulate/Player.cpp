#include "tools/orlan/simulate/Player.hpp"

#include <utility>

#include "tools/orlan/simulate/Stage.hpp"
#include "tools/orlan/simulate/Timeline.hpp"

namespace orlan::simulate {

struct Player::Parts {
  Parts(const Scenario& what, Transcript::Write write, std::set<std::string, std::less<>> only)
      : scenario(what),
        world(what.world),
        transcript(std::move(write), std::move(only), [this] { return world.now(); }) {}

  const Scenario& scenario;
  sim::World world;
  Transcript transcript;
  std::vector<Spectator> spectators;
  std::optional<std::string> mistake;

  void passed(std::size_t done, std::size_t all) const {
    for (const Spectator& spectator : spectators) {
      if (spectator.passed) spectator.passed(done, all);
    }
  }
};

Player::Player(const Scenario& scenario, Transcript::Write write, std::set<std::string, std::less<>> only)
    : parts_(std::make_unique<Parts>(scenario, std::move(write), std::move(only))) {}

Player::~Player() = default;

void Player::add(Spectator spectator) {
  parts_->spectators.push_back(std::move(spectator));
}

Duration Player::now() const {
  return parts_->world.now();
}

const std::optional<std::string>& Player::mistake() const {
  return parts_->mistake;
}

void Player::play() {
  Parts& p = *parts_;
  Stage stage(p.world, p.scenario, p.transcript, p.spectators);
  stage.launch();
  // What is due at the time of a step comes before it, and so does all that an earlier step of the same time
  // set going for that time.
  const auto moments = timeline(p.scenario);
  for (std::size_t done = 0; done < moments.size(); ++done) {
    const Moment& moment = moments[done];
    p.passed(done, moments.size());
    p.world.runUntil(moment.at);
    stage.perform(moment.step, moment.fix);
    if ((p.mistake = stage.mistake())) return p.transcript.abandoned();
  }
  p.world.runUntil(p.scenario.until);
  p.transcript.ended(p.scenario.steps.size());
}

}  // namespace orlan::simulate
