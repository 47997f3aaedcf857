#include "tools/orlan/simulate/SimulateSession.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "orlan/base/text.hpp"
#include "tools/orlan/output/OutputFile.hpp"
#include "tools/orlan/report/Report.hpp"
#include "tools/orlan/report/ReportCollector.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/Progress.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"
#include "tools/orlan/simulate/Tally.hpp"
#include "tools/orlan/simulate/Timeline.hpp"
#include "tools/orlan/simulate/schema.hpp"
#include "tools/orlan/simulate/spelling.hpp"

namespace orlan::simulate {
namespace {

constexpr int played = 0;
constexpr int failed = 1;
constexpr int invalidScenario = 2;

using Events = std::set<std::string, std::less<>>;

int complain(int status, const std::string& why) {
  fmt::print(stderr, "orlan: {}\n", text::escapedControls(why));
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
      return wrongOption(fmt::format("--only: unknown event {}, did you mean \"{}\"?", json::print(name),
                                     nearest(name, known)));
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

/// What a report shows of it, if one is wanted; the error is a mistake in the scenario.
Result<report::ReportData> play(const Scenario& scenario, output::OutputFile& transcript,
                                const Events& events, Tally& tally, const SimulateOptions& options) {
  const TimePoint begin = scenario.world.start;
  const auto& offset = scenario.phone.offsetFromUtc;
  const Player* playing = nullptr;
  report::ReportCollector collector(text::escapedControls(scenario.name), begin,
                                    offset ? offset(begin) : std::chrono::seconds(0),
                                    [&playing] { return playing->now(); });
  Player player(
      scenario, [&](std::string_view line) { transcript.write(line); }, events);
  playing = &player;
  Progress progress(!options.quiet && ::isatty(STDERR_FILENO) == 1 ? stderr : nullptr);
  player.add({&tally, {}, [&](std::size_t done, std::size_t all) { progress.passed(done, all); }});
  if (options.report) {
    player.add({&collector, [&collector](OrlanServices& services, ApplicationState state) {
                  collector.watch(services, state);
                }});
  }
  player.play();
  if (const auto& mistake = player.mistake()) return Unexpected(Error{"Scenario", -1, *mistake});
  return collector.data();
}

int printSchema() {
  auto output = output::OutputFile::open("");
  if (!output) return complain(failed, output.error().description);
  output->write(scenarioSchema());
  const auto written = output->finish();
  return written ? played : complain(failed, written.error().description);
}

}  // namespace

int simulate(const SimulateOptions& options) {
  if (options.schema) return printSchema();
  const auto events = chosenEvents(options.only);
  if (!events) return complain(failed, events.error().description);
  const auto scenario = readScenario(options.scenario);
  if (!scenario) return complain(invalidScenario, scenario.error().description);
  auto output = output::OutputFile::open(options.transcript);
  if (!output) return complain(failed, output.error().description);
  auto report = output::OutputFile::openIfNamed(options.report);
  if (!report) return complain(failed, report.error().description);

  Tally tally;
  const auto data = play(*scenario, *output, *events, tally, options);
  if (!data) {
    return complain(invalidScenario, options.scenario + ": " + data.error().description);
  }

  if (const auto written = output->finish(); !written) return complain(failed, written.error().description);
  if (*report) {
    (*report)->write(report::renderReport(*data));
    if (const auto written = (*report)->finish(); !written)
      return complain(failed, written.error().description);
  }
  if (!options.quiet) summarize(*scenario, tally);
  return played;
}

}  // namespace orlan::simulate
