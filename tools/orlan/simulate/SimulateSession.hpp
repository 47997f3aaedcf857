#pragma once

#include <optional>
#include <string>

namespace orlan::simulate {

/// What `orlan simulate` was asked to do.
struct SimulateOptions {
  std::string scenario;               // file
  std::string transcript;             // file; empty: standard output
  std::optional<std::string> only;    // events to keep, separated by commas; none: all
  std::optional<std::string> report;  // HTML file to write
  bool quiet = false;                 // no summary on standard error
  bool schema = false;                // only write what a scenario may be
};

/// One whole `orlan simulate`. Exit status: 0 played to the end, 2 the scenario is not valid (no file was
/// written; when only playing could show it, standard output has the lines up to there and no "end"), 1
/// anything else.
[[nodiscard]] int simulate(const SimulateOptions& options);

}  // namespace orlan::simulate
