#pragma once

#include <string>

#include "orlan/base/Time.hpp"

namespace orlan::run {

/// Where the phone's clock stood when the last replay in a home ended, kept in a file there. A replay shows
/// the times of its track; a later one in the same home must not go back behind what the stored state
/// remembers.
class ReplayStart {
 public:
  explicit ReplayStart(const std::string& dataDirectory) : file_(dataDirectory + "/replay-clock") {}

  /// The track's own time, or a second after the last replay's end when that is later.
  [[nodiscard]] TimePoint choose(TimePoint trackBegin) const;
  void keep(TimePoint end) const;

 private:
  std::string file_;
};

}  // namespace orlan::run
