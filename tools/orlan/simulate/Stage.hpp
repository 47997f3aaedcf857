#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "orlan/sdk/Runtime.hpp"
#include "phones/simulated/SimulatedPhone.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/ServiceStreams.hpp"

namespace orlan::simulate {

/// The host's process: the library and a host that listens to it.
struct Process {
  Process(sim::SimulatedPhone& phone, const BaseUrls& hosts, Transcript& transcript)
      : delegate(recordingDelegate(transcript)),
        runtime(phone.platform(), {hosts}),
        scope(runtime),
        streams(runtime.services(), transcript) {}

  std::shared_ptr<OrlanPluginDelegate> delegate;
  Runtime runtime;
  Runtime::Scope scope;
  ServiceStreams streams;
};

/// The phone with the host application on it, and what a step does to either.
class Stage {
 public:
  Stage(sim::World& world, const Scenario& scenario, Transcript& transcript,
        const std::vector<Spectator>& spectators);

  /// The process begins; again after a relaunch.
  void launch();

  /// Does what step number `index` says; of a walk, its fix number `fix`.
  void perform(std::size_t index, std::size_t fix);

 private:
  void act(const step::Start& start);
  void act(const step::StartBridged& start);
  void act(const step::GetNotificationStats&);
  void act(const step::ResetNotificationStats&);
  void act(const step::ClearCooldown& cooldown);
  void act(const step::Fixes& batch);
  void act(const step::Track& walk);
  void act(const step::MoveApplication& move);
  void act(const step::RaiseSignal& raise);
  void act(const step::SetLocationAuthorization& status);
  void act(const step::SetNotificationAuthorization& status);
  void act(const step::CrossRegion& crossing);
  void act(const step::Relaunch& relaunch);
  void act(const step::SetClock& clock);
  void act(const step::ChangeStore& change);
  void act(const step::ChangeFile& change);
  void act(const step::ReadFile& read);
  void act(const step::FailLocation& failure);
  void act(const step::FailStorage& storage);

  [[nodiscard]] OrlanServices& services() { return process_->runtime.services(); }
  [[nodiscard]] OrlanPlugin::Delegate delegateIf(bool wanted) const;
  void result(json::Value value);

  const Scenario& scenario_;
  Transcript& transcript_;
  const std::vector<Spectator>& spectators_;
  sim::SimulatedPhone phone_;
  std::unique_ptr<Process> process_;
  std::size_t index_ = 0;  // of the step that is performed
  std::size_t fix_ = 0;
};

}  // namespace orlan::simulate
