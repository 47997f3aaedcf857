#include <gtest/gtest.h>

#include <numeric>
#include <utility>

#include "tools/orlan/simulate/ScenarioReader.hpp"
#include "tools/simulate/Life.hpp"
#include "tools/simulate/LifeWitness.hpp"
#include "tools/simulate/shrink.hpp"

namespace orlan::simulate::life {
namespace {

/// What was wrong in it, if anything.
std::optional<std::string> faultIn(const Life& life) {
  const auto scenario = parseScenario(scenarioOf(life), ".", "life");
  if (!scenario) return scenario.error().description;
  Player player(*scenario, [](std::string_view) {}, {"end"});
  LifeWitness witness(*scenario, [&player] { return player.now(); });
  player.add(witness.spectator());
  player.play();
  return witness.verdict();
}

/// The shortest life with a fault that is found from this one, as a scenario, and the fault.
std::string explained(Life life) {
  const auto fails = [](const Life& shorter) { return isKnown(shorter) && faultIn(shorter).has_value(); };
  const auto without = [&](auto& part) {
    part = shrunk(part, [&](const auto& fewer) {
      const auto all = std::exchange(part, fewer);
      const bool failed = fails(life);
      part = all;
      return failed;
    });
  };
  without(life.events);
  without(life.answers);
  for (auto& answer : life.answers) {
    if (answer) without(*answer);
  }
  return *faultIn(life) + "\n" + scenarioOf(life);
}

// In a few cohorts, so that they can live side by side.
constexpr int cohorts = 5;
constexpr int lives = 50;  // of each
constexpr int length = 400;
static_assert(cohorts * lives * length >= 100'000);

class Lives : public testing::TestWithParam<int> {};

TEST_P(Lives, BothMonitorsDoWhatTheModelSays) {
  for (int each = 0; each < lives; ++each) {
    const auto seed = static_cast<std::uint64_t>(GetParam() * lives + each + 1);
    const Life life = randomLife(seed, length);
    ASSERT_TRUE(isKnown(life));
    if (const auto fault = faultIn(life)) {
      FAIL() << "life " << seed << ": " << *fault << "\nshortened: " << explained(life);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Cohorts, Lives, testing::Range(0, cohorts));

TEST(Shrinking, AFaultIsShrunkToTheEventsThatMakeIt) {
  std::vector<int> events(250);
  std::iota(events.begin(), events.end(), 0);
  const auto fails = [](const std::vector<int>& some) {
    const auto has = [&](int event) { return std::find(some.begin(), some.end(), event) != some.end(); };
    return has(17) && has(18) && has(203);
  };
  EXPECT_EQ(shrunk(events, fails), (std::vector<int>{17, 18, 203}));
}

}  // namespace
}  // namespace orlan::simulate::life
