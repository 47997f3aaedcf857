#pragma once

namespace CLI {
class App;
}

namespace orlan::devbackend {

/// Adds the subcommand `backend` to the program. When the command line names it, it runs while the command
/// line is parsed, until SIGINT or SIGTERM, and sets `exitStatus`: 0 ended as asked, 2 an option or an input
/// file is not usable, 1 anything else (the port is taken, the record cannot be written). `exitStatus` must
/// outlive the parsing.
void addBackendCommand(CLI::App& program, int& exitStatus);

}  // namespace orlan::devbackend
