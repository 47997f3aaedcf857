#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "phones/simulated/SimulatedPhone.hpp"
#include "tools/orlan/simulate/Host.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::simulate {

/// The phone with the host application on it: what a step acts on, and where its outcome is written down.
class Stage {
 public:
  Stage(sim::World& world, const Scenario& scenario, Transcript& transcript,
        const std::vector<Spectator>& spectators);

  /// The process begins.
  void launch();

  /// Does what step number `index` says; of a walk, its fix number `fix`.
  void perform(std::size_t index, std::size_t fix);

  /// What is wrong with the step that was performed last, when only playing it could show it.
  [[nodiscard]] const std::optional<std::string>& mistake() const { return mistake_; }

  // For the step that is performed.

  [[nodiscard]] sim::SimulatedPhone& phone() { return phone_; }
  [[nodiscard]] Host& host() { return *host_; }
  [[nodiscard]] OrlanServices& services() { return host_->services(); }
  [[nodiscard]] OrlanPlugin& plugin() { return *services().plugin; }

  /// The process is killed and begins again.
  void relaunch(ApplicationState state);

  void result(json::Value value);

  /// Writes the outcome down when it is called, which may be long after the step.
  template <class T>
  [[nodiscard]] Completion<T> completion() {
    return [&transcript = transcript_, step = index_, call = call()](const Result<T>& outcome) {
      if (outcome) {
        transcript.result(step, call, formOf(*outcome));
      } else {
        transcript.failed(step, call, outcome.error());
      }
    };
  }

  /// `what` is wrong with the step's argument `key` after all.
  void mistaken(std::string_view key, std::string_view what);

 private:
  [[nodiscard]] const std::string& call() const { return scenario_.steps[index_].call; }

  const Scenario& scenario_;
  Transcript& transcript_;
  const std::vector<Spectator>& spectators_;
  sim::SimulatedPhone phone_;
  std::unique_ptr<Host> host_;
  std::optional<std::string> mistake_;
  std::size_t index_ = 0;  // of the step that is performed
};

}  // namespace orlan::simulate
