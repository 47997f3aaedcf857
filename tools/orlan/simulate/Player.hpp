#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "orlan/sdk/OrlanServices.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "tools/orlan/simulate/Scenario.hpp"
#include "tools/orlan/simulate/Transcript.hpp"

namespace orlan::simulate {

/// Somebody who looks on while a scenario is played. Outlives the player.
struct Spectator {
  phone::PhoneObserver* phone = nullptr;  // told what the phone does
  /// A process began in this state; its services are still to come to life.
  std::function<void(OrlanServices&, ApplicationState)> launched;
  /// So many moments (steps, fixes of a walk) of all have been played.
  std::function<void(std::size_t done, std::size_t all)> passed;
};

/// Plays one scenario through the library on a simulated phone, in virtual time.
class Player {
 public:
  /// `write` takes the transcript's lines; `only` as for `Transcript`. The scenario outlives the player.
  Player(const Scenario& scenario, Transcript::Write write, std::set<std::string, std::less<>> only);
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// Before `play`.
  void add(Spectator spectator) { spectators_.push_back(std::move(spectator)); }

  /// Virtual time since second 0.
  [[nodiscard]] Duration now() const { return world_.now(); }

  /// From the first step to the end, or to the first mistake; once.
  void play();

  /// What is wrong with the scenario after all, once it has been played: where a mistake stands, what was
  /// expected there and what was found. The transcript then has no end.
  [[nodiscard]] const std::optional<std::string>& mistake() const { return mistake_; }

 private:
  const Scenario& scenario_;
  sim::World world_;
  Transcript transcript_;
  std::vector<Spectator> spectators_;
  std::optional<std::string> mistake_;
};

}  // namespace orlan::simulate
