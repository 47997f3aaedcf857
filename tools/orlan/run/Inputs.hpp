#pragma once

#include <optional>
#include <string>

#include "orlan/base/Result.hpp"
#include "phones/linux/Track.hpp"
#include "tools/orlan/run/RunOptions.hpp"
#include "tools/orlan/run/Script.hpp"

namespace orlan::run {

/// The files of a run, read and checked before anything is started.
struct Inputs {
  linuxphone::Track track;
  std::optional<std::string> campaigns;  // the whole answer
  Script script;
};

/// The error is one line that names the file and the place in it.
[[nodiscard]] Result<Inputs> readInputs(const RunOptions& options);

}  // namespace orlan::run
