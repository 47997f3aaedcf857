#include "tools/orlan/simulate/SimulateCommand.hpp"

#include <CLI/CLI.hpp>
#include <memory>

#include "tools/orlan/simulate/SimulateSession.hpp"
#include "tools/orlan/simulate/Transcript.hpp"

namespace orlan::simulate {
namespace {

constexpr const char* description =
    R"(Play a scenario: a phone, a backend and a day in the life of the device, described in a JSON file.

The real library runs on a simulated phone in virtual time, so that a day takes no longer than a
moment and the same scenario always gives the same transcript, byte for byte: one JSON object a line
for everything the outside world could have seen.)";

constexpr const char* examples = R"(Examples:
  $ orlan simulate walk.json
  $ orlan simulate walk.json --only notification,delegate
  $ orlan simulate walk.json --transcript walk.jsonl --report walk.html --quiet
  $ orlan simulate --schema

Exit status: 0 played to the end; 2 the scenario is not valid (the message says where); 1 anything else.)";

/// The names of all events, in lines that fit a terminal.
std::string eventList() {
  constexpr std::size_t width = 80;
  std::string list = "Events:";
  std::size_t used = list.size();
  for (const auto name : Transcript::eventNames()) {
    if (used + name.size() > width) {
      list += "\n       ";
      used = 7;
    }
    list += " " + std::string(name);
    used += name.size() + 1;
  }
  return list;
}

}  // namespace

void addSimulateCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<SimulateOptions>();
  CLI::App* command = app.add_subcommand("simulate", description);
  command->footer(eventList() + "\n\n" + examples);
  command->add_option("scenario", options->scenario, "the scenario to play")->type_name("SCENARIO.json");
  command->add_option("--transcript", options->transcript, "write the transcript to a file")
      ->type_name("OUT.jsonl");
  command->add_option("--only", options->only, "keep only these events and \"end\"")
      ->type_name("EVENT[,EVENT]");
  command
      ->add_option("--report", options->report,
                   "write a self-contained HTML page: map, timeline, notifications")
      ->type_name("FILE.html");
  command->add_flag("--quiet", options->quiet, "no summary on standard error");
  command->add_flag("--schema", options->schema,
                    "print what a scenario may be, as JSON Schema, and play none");
  command->callback([options, &exitCode] {
    if (options->scenario.empty() && !options->schema) throw CLI::RequiredError("scenario");
    exitCode = simulate(*options);
  });
}

}  // namespace orlan::simulate
