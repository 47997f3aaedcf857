#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/Time.hpp"
#include "tools/orlan/run/Command.hpp"

namespace orlan::run {

struct ScriptLine {
  std::optional<Duration> at;  // since the walk began; none: once it has ended
  Command command;
};

/// What the person does on the way, in the order of the times.
using Script = std::vector<ScriptLine>;

/// One line a command: "[HOURS:]MINUTES:SECONDS COMMAND" or "end COMMAND", in the order of their times; empty
/// lines, and what follows a #, say nothing. The error names `name` and the line.
[[nodiscard]] Result<Script> parseScript(std::string_view text, const std::string& name);

[[nodiscard]] Result<Script> readScript(const std::string& path);

}  // namespace orlan::run
