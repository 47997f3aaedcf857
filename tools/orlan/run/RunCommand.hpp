#pragma once

namespace CLI {
class App;
}

namespace orlan::run {

/// Adds `run` to the program; once parsed, it runs and leaves its exit status in `exitCode`.
void addRunCommand(CLI::App& app, int& exitCode);

}  // namespace orlan::run
