#include "tools/orlan/simulate/ScenarioReader.hpp"

#include <algorithm>
#include <filesystem>

#include "orlan/base/text.hpp"
#include "phones/linux/disk.hpp"
#include "tools/orlan/simulate/readers.hpp"

namespace orlan::simulate {
namespace {

Unexpected<Error> invalid(const std::string& why) {
  return Unexpected(Error{"Scenario", -1, why});
}

void readUntil(const Item& until, Scenario& scenario) {
  const Duration last = scenario.steps.empty() ? Duration::zero() : scenario.steps.back().at;
  scenario.until = last;
  if (!until.isThere()) return;
  scenario.until = until.time();
  if (scenario.until < last) {
    until.expected("the time of the last step (" + text::fromDouble(seconds(last)) + ") or later");
  }
}

Scenario read(const Item& root, const Files& files, std::span<const std::string_view> known) {
  Scenario scenario;
  const Members members = root.members(known);
  scenario.name = members.string("name", "");
  if (members.has("start")) scenario.world.start = members.dateTime("start");
  if (members.has("seed")) scenario.world.seed = static_cast<std::uint64_t>(members["seed"].integer());
  scenario.phone = readDevice(members["device"], scenario.world.start, files);
  scenario.backend = readBackend(members["backend"], files);
  scenario.hosts = readHosts(members["hosts"]);
  scenario.steps = readSteps(members["steps"], files);
  // The library only appends to its log, which soon is larger than all else; only this step can show it.
  scenario.phone.keepsAppended =
      std::ranges::any_of(scenario.steps, [](const Step& step) { return step.call == "readFile"; });
  readUntil(members["until"], scenario);
  return scenario;
}

}  // namespace

Result<Scenario> parseScenario(std::string_view text, const std::string& directory, std::string name,
                               std::span<const std::string_view> members) {
  const auto value = json::parse(text);
  if (!value) return invalid(value.error().description);
  Mistake mistake;
  Scenario scenario = read(Item(&*value, "", mistake), Files(directory), members);
  if (mistake.text()) return invalid(*mistake.text());
  if (scenario.name.empty()) scenario.name = std::move(name);
  return scenario;
}

Result<Scenario> readScenario(const std::string& path, std::span<const std::string_view> members) {
  const auto bytes = linuxphone::disk::read(path);
  if (!bytes) return invalid(path + ": " + bytes.error().message());
  const std::filesystem::path file(path);
  auto scenario = parseScenario(*bytes, file.parent_path().string(), file.filename().string(), members);
  if (!scenario) return invalid(path + ": " + scenario.error().description);
  return scenario;
}

}  // namespace orlan::simulate
