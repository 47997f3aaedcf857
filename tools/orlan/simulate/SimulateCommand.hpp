#pragma once

namespace CLI {
class App;
}

namespace orlan::simulate {

/// Adds `simulate` to the program; once parsed, it runs and leaves its exit status in `exitCode`, which must
/// outlive the parsing.
void addSimulateCommand(CLI::App& app, int& exitCode);

}  // namespace orlan::simulate
