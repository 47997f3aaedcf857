#include <CLI/CLI.hpp>
#include <csignal>
#include <iostream>
#include <sstream>

#include "tools/orlan/backend/BackendCommand.hpp"
#include "tools/orlan/output/shown.hpp"
#include "tools/orlan/run/RunCommand.hpp"
#include "tools/orlan/simulate/SimulateCommand.hpp"

namespace {

constexpr const char* description =
    R"(Turns a phone's position into the right local notification at the right door.

  simulate   play a scenario on a simulated phone and write down all that the outside world could see
  run        be a host application in a terminal, fed by a recorded track
  backend    serve a development backend)";

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): what nobody expects, such as no memory, ends the program.
int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader who goes away must not end what is still to be written elsewhere
  CLI::App app{description, "orlan"};
  app.require_subcommand(1);
  app.set_version_flag("--version", "orlan " ORLAN_VERSION);
  int exitCode = 0;
  orlan::simulate::addSimulateCommand(app, exitCode);
  orlan::run::addRunCommand(app, exitCode);
  orlan::devbackend::addBackendCommand(app, exitCode);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& mistake) {
    std::ostringstream words;  // which repeat what was typed
    app.exit(mistake, words, words);
    std::cerr << orlan::output::shown(words.str());
    return 2;
  }
  return exitCode;
}
