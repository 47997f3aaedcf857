#pragma once

#include <string>

#include "tools/orlan/shell/CommandTree.hpp"

namespace orlan::shell {

/// Scripts that complete the program's command line: subcommands, options and the files behind them.
[[nodiscard]] std::string bashCompletions(const Command& program);
[[nodiscard]] std::string zshCompletions(const Command& program);
[[nodiscard]] std::string fishCompletions(const Command& program);

}  // namespace orlan::shell
