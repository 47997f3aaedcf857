#include "tools/orlan/simulate/SimulateSession.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

#include "orlan/base/text.hpp"
#include "tools/orlan/output/OutputFile.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"
#include "tools/orlan/simulate/Tally.hpp"
#include "tools/orlan/simulate/Timeline.hpp"
#include "tools/orlan/simulate/spelling.hpp"

namespace orlan::simulate {
namespace {

constexpr int played = 0;
constexpr int failed = 1;
constexpr int invalidScenario = 2;

using Events = std::set<std::string, std::less<>>;

int complain(int status, const std::string& why) {
  fmt::print(stderr, "orlan: {}\n", why);
  return status;
}

Unexpected<Error> wrongOption(std::string why) {
  return Unexpected(Error{"Options", -1, std::move(why)});
}

/// The events in a list such as "log,request"; all when there is no list.
Result<Events> chosenEvents(const std::optional<std::string>& list) {
  Events chosen;
  if (!list) return chosen;
  const auto known = Transcript::eventNames();
  for (const std::string& name : text::split(*list, ',')) {
    if (std::find(known.begin(), known.end(), name) == known.end()) {
      return wrongOption(fmt::format("--only: unknown event {}, did you mean \"{}\"?",
                                     text::escapedControls(json::print(name)), nearest(name, known)));
    }
    chosen.insert(name);
  }
  if (chosen.empty()) return wrongOption("--only: expected the names of events, found none");
  return chosen;
}

void summarize(const Scenario& scenario, const Tally& tally) {
  const auto time = [](Duration duration) { return text::fixed(seconds(duration), 3) + " s"; };
  fmt::print(stderr, "{}: {} step{} in {}: {}\n", text::escapedControls(scenario.name), scenario.steps.size(),
             scenario.steps.size() == 1 ? "" : "s", time(scenario.until), tally.text());
  if (const auto walk = walkBeyondTheEnd(scenario)) {
    fmt::print(stderr,
               "The scenario ended at {}, before its walk did at {}: \"until\" says how long to go on.\n",
               time(scenario.until), time(*walk));
  }
}

}  // namespace

int simulate(const SimulateOptions& options) {
  const auto events = chosenEvents(options.only);
  if (!events) return complain(failed, events.error().description);
  const auto scenario = readScenario(options.scenario);
  if (!scenario) return complain(invalidScenario, scenario.error().description);
  auto output = output::OutputFile::open(options.transcript);
  if (!output) return complain(failed, output.error().description);

  Tally tally;
  Player player(
      *scenario, [&](std::string_view line) { output->write(line); }, *events);
  player.add({&tally, {}});
  player.play();

  if (const auto written = output->finish(); !written) return complain(failed, written.error().description);
  if (!options.quiet) summarize(*scenario, tally);
  return played;
}

}  // namespace orlan::simulate
