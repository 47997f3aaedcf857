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
    const Fix at = walk->fix(fix);
    phone_.moveTo(at.coordinate, at.accuracy);
  } else if (const auto* act = std::get_if<ActOfAPerson>(&action)) {
    (*act)(*this);
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

Scene::Outcome Stage::outcome() {
  return [&transcript = transcript_, step = index_, call = call()](const Result<json::Value>& outcome) {
    if (outcome) {
      transcript.result(step, call, *outcome);
    } else {
      transcript.failed(step, call, outcome.error());
    }
  };
}

std::optional<NotificationRequest> Stage::scheduled(std::size_t number) {
  const auto& all = phone_.scheduled();
  if (number < all.size()) return all[number];
  mistaken("delivered",
           fmt::format("expected the number of a notification scheduled by then ({}), found {}",
                       all.empty() ? "there is none" : fmt::format("0 to {}", all.size() - 1), number));
  return std::nullopt;
}

void Stage::mistaken(std::string_view key, std::string_view what) {
  mistake_ = fmt::format("steps[{}].{}: {}", index_, key, what);
}

}  // namespace orlan::simulate
