#include "tools/orlan/run/Inputs.hpp"

#include <fmt/format.h>

#include <array>

#include "phones/linux/PropertyList.hpp"
#include "tools/orlan/backend/Files.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"

namespace orlan::run {

namespace {

/// The steps of a scenario that needs no simulated phone.
Result<std::vector<simulate::Step>> readScript(const std::string& path) {
  constexpr std::array<std::string_view, 2> members = {"name", "steps"};
  auto scenario = simulate::readScenario(path, members);
  if (!scenario) return Unexpected(scenario.error());
  for (std::size_t i = 0; i < scenario->steps.size(); ++i) {
    const simulate::Step& step = scenario->steps[i];
    if (std::holds_alternative<simulate::ActOfAPerson>(step.action)) continue;
    return Unexpected(Error{"orlan run", 2,
                            fmt::format("{}: steps[{}].do: a person cannot do \"{}\"", path, i, step.call)});
  }
  return std::move(scenario->steps);
}

}  // namespace

Result<Inputs> readInputs(const RunOptions& options) {
  Inputs inputs;
  auto track = linuxphone::readTrack(options.track);
  if (!track) return Unexpected(track.error());
  inputs.track = std::move(track).value();
  if (options.campaigns) {
    auto campaigns = devbackend::readCampaigns(*options.campaigns);
    if (!campaigns) return Unexpected(campaigns.error());
    inputs.campaigns = std::move(campaigns).value();
  }
  if (options.config) {
    const auto content = linuxphone::readPropertyList(*options.config);
    if (!content) return Unexpected(content.error());
  }
  if (options.script) {
    auto script = readScript(*options.script);
    if (!script) return Unexpected(script.error());
    inputs.script = std::move(script).value();
  }
  return inputs;
}

}  // namespace orlan::run
