#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "phones/simulated/SimulatedPhone.hpp"
#include "tools/orlan/simulate/Host.hpp"
#include "tools/orlan/simulate/Player.hpp"

namespace orlan::simulate {

/// The phone with the host application on it, and what a step does to either.
class Stage {
 public:
  Stage(sim::World& world, const Scenario& scenario, Transcript& transcript,
        const std::vector<Spectator>& spectators);

  /// The process begins; again after a relaunch.
  void launch();

  /// Does what step number `index` says; of a walk, its fix number `fix`.
  void perform(std::size_t index, std::size_t fix);

  /// What is wrong with the step that was performed last, when only playing it could show it.
  [[nodiscard]] const std::optional<std::string>& mistake() const { return mistake_; }

 private:
  void act(const step::Call& call);
  void act(const step::ClearCooldown& cooldown);
  void act(const step::Fixes& batch);
  void act(const step::Track& walk);
  void act(const step::MoveApplication& move);
  void act(const step::RaiseSignal& raise);
  void act(const step::SetLocationAuthorization& status);
  void act(const step::SetNotificationAuthorization& status);
  void act(const step::CrossRegion& crossing);
  void act(const step::Relaunch& relaunch);
  void act(const step::Notify& notify);
  void act(const step::SetClock& clock);
  void act(const step::ChangeStore& change);
  void act(const step::ChangeFile& change);
  void act(const step::ReadFile& read);
  void act(const step::FailLocation& failure);
  void act(const step::FailStorage& storage);

  [[nodiscard]] OrlanServices& services() { return host_->services(); }
  [[nodiscard]] std::optional<NotificationRequest> find(const step::Notify& notify);
  void result(json::Value value);

  const Scenario& scenario_;
  Transcript& transcript_;
  const std::vector<Spectator>& spectators_;
  sim::SimulatedPhone phone_;
  std::unique_ptr<Host> host_;
  std::optional<std::string> mistake_;
  std::size_t index_ = 0;  // of the step that is performed
  std::size_t fix_ = 0;
};

}  // namespace orlan::simulate
