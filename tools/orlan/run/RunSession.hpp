#pragma once

#include "tools/orlan/run/RunOptions.hpp"

namespace orlan::run {

/// One whole `orlan run`, from reading its inputs to the summary. Exit status: 0 done (or ended by a signal),
/// 2 an input is not usable (nothing was started), 1 anything else. Main thread; once at a time in a process.
[[nodiscard]] int runSession(const RunOptions& options);

}  // namespace orlan::run
