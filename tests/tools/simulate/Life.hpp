#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orlan/base/Time.hpp"
#include "tools/simulate/MonitorModel.hpp"

namespace orlan::simulate::life {

/// One thing that happens to a host: a step of a scenario.
struct Event {
  std::int64_t second = 0;
  std::string members;  // "do" and its arguments
};

/// The areas that the backend knows of, by their numbers; nothing when it cannot be reached.
using Answer = std::optional<std::vector<int>>;

/// What happens to a host, and what its backend answers, one request after the other.
struct Life {
  bool beginsInFront = true;
  std::vector<Event> events;
  std::vector<Answer> answers;
};

/// The area of that number: 0, 1, 2, … Two of them belong to the same campaign.
[[nodiscard]] Area areaOf(int number);

/// The same life for the same seed, everywhere.
[[nodiscard]] Life randomLife(std::uint64_t seed, int length);

/// Whether it is one that the model knows: no process is started twice, and the backend has an answer.
[[nodiscard]] bool isKnown(const Life& life);

/// As a scenario that `orlan simulate` plays.
[[nodiscard]] std::string scenarioOf(const Life& life);

}  // namespace orlan::simulate::life
