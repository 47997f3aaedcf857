#pragma once

#include <string>

namespace CLI {
class App;
}

namespace orlan::shell {

/// Adds `completions` and, hidden, `manual`. Both print what stands in `app` when they run.
void addShellCommands(CLI::App& app, const std::string& version);

}  // namespace orlan::shell
