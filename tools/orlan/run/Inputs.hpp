#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orlan/base/Result.hpp"
#include "phones/linux/Track.hpp"
#include "tools/orlan/run/RunOptions.hpp"
#include "tools/orlan/simulate/Steps.hpp"

namespace orlan::run {

/// The files of a run, read and checked before anything is started.
struct Inputs {
  linuxphone::Track track;
  std::optional<std::string> campaigns;  // the whole answer
  std::vector<simulate::Step> script;    // what the person does on the way, in the order of time
};

/// The error is one line that names the file and the place in it.
[[nodiscard]] Result<Inputs> readInputs(const RunOptions& options);

}  // namespace orlan::run
