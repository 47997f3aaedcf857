#include "tools/orlan/simulate/Player.hpp"

#include "tools/orlan/simulate/Stage.hpp"
#include "tools/orlan/simulate/Timeline.hpp"

namespace orlan::simulate {

Player::Player(const Scenario& scenario, Transcript::Write write, std::set<std::string, std::less<>> only)
    : scenario_(scenario),
      world_(scenario.world),
      transcript_(std::move(write), std::move(only), [this] { return world_.now(); }) {}

void Player::play() {
  Stage stage(world_, scenario_, transcript_, spectators_);
  stage.launch();
  // What is due at the time of a step comes before it, and so does all that an earlier step of the same time
  // set going for that time.
  Timeline timeline(scenario_);
  for (std::size_t done = 0; const auto moment = timeline.next(); ++done) {
    for (const Spectator& spectator : spectators_) {
      if (spectator.passed) spectator.passed(done, timeline.size());
    }
    world_.runUntil(moment->at);
    stage.perform(moment->step, moment->fix);
    if ((mistake_ = stage.mistake())) return transcript_.abandoned();
  }
  world_.runUntil(scenario_.until);
  transcript_.ended(scenario_.steps.size());
}

}  // namespace orlan::simulate
