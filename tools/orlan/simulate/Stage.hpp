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
#include "tools/orlan/simulate/Scene.hpp"

namespace orlan::simulate {

/// The phone with the host application on it: what a step acts on, and where its outcome is written down.
class Stage final : public Scene {
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
  [[nodiscard]] OrlanServices& services() override { return host_->services(); }
  [[nodiscard]] phone::ApplicationModel& application() override { return phone_.application(); }
  [[nodiscard]] phone::LocationHub& locations() override { return phone_.locations(); }
  [[nodiscard]] phone::LocalNotificationCenter& notifications() override { return phone_.notifications(); }
  [[nodiscard]] std::optional<NotificationRequest> scheduled(std::size_t number) override;
  [[nodiscard]] Outcome outcome() override;

  /// The process is killed and begins again.
  void relaunch(ApplicationState state);

  void result(json::Value value);

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
