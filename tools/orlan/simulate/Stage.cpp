#include "tools/orlan/simulate/Stage.hpp"

#include <fmt/format.h>

namespace orlan::simulate {

Stage::Stage(sim::World& world, const Scenario& scenario, Transcript& transcript,
             const std::vector<Spectator>& spectators)
    : scenario_(scenario), transcript_(transcript), spectators_(spectators), phone_(world, scenario.phone) {
  phone_.observe(transcript_);
  for (const Spectator& spectator : spectators_) {
    if (spectator.phone != nullptr) phone_.observe(*spectator.phone);
  }
  for (const Route& route : scenario.backend) phone_.http().answer(route.method, route.path, route.answers);
}

void Stage::launch() {
  host_ = std::make_unique<Host>(phone_, scenario_.hosts, transcript_);
  for (const Spectator& spectator : spectators_) {
    if (spectator.launched) spectator.launched(services(), phone_.application().state());
  }
}

void Stage::perform(std::size_t index, std::size_t fix) {
  index_ = index;
  const auto& action = scenario_.steps[index].action;
  if (const auto* walk = std::get_if<Track>(&action)) {
    phone_.moveTo(walk->fixes[fix].coordinate, walk->fixes[fix].accuracy);
  } else {
    std::get<Act>(action)(*this);
  }
}

void Stage::relaunch(ApplicationState state) {
  {
    const Transcript::Silence killed(transcript_);  // a process that is killed says nothing any more
    host_.reset();
  }
  phone_.relaunch(state);
  launch();
}

void Stage::result(json::Value value) {
  transcript_.result(index_, call(), std::move(value));
}

void Stage::mistaken(std::string_view key, std::string_view what) {
  mistake_ = fmt::format("steps[{}].{}: {}", index_, key, what);
}

}  // namespace orlan::simulate
