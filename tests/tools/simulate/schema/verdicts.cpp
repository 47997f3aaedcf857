// First a line of JSON with what the program has built in: its schema, and the names that its readers and its
// transcripts know. Then of each scenario on standard input, one a line, whether the readers take it: 1 or 0.
// The argument is the directory of the files that scenarios name.
#include <iostream>
#include <string>

#include "tools/orlan/simulate/ScenarioReader.hpp"
#include "tools/orlan/simulate/Transcript.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/schema.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

json::Array list(std::span<const std::string_view> names) {
  return {names.begin(), names.end()};
}

json::Object builtIn() {
  json::Array steps;
  for (const StepKind& kind : stepKinds()) steps.push_back(json::Array{kind.name, list(kind.arguments)});
  return {{"schema", scenarioSchema()},
          {"events", list(Transcript::eventNames())},
          {"steps", std::move(steps)},
          {"members", json::Object{{"scenario", list(keys::scenario)},
                                   {"hosts", list(keys::hosts)},
                                   {"device", list(keys::device)},
                                   {"bundle", list(keys::bundle)},
                                   {"route", list(keys::route)},
                                   {"response", list(keys::response)},
                                   {"fix", list(keys::fix)},
                                   {"answer", list(keys::answer)},
                                   {"selection", list(keys::selection)}}}};
}

}  // namespace
}  // namespace orlan::simulate

int main(int, char** arguments) {
  using namespace orlan;
  std::cout << json::print(simulate::builtIn()) << '\n';
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << simulate::parseScenario(line, arguments[1], "scenario").has_value() << '\n';
  }
}
