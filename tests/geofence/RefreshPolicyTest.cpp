#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "orlan/geofence/RefreshPolicy.hpp"

namespace orlan::refreshPolicy {
namespace {

using namespace std::chrono_literals;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(RefreshPolicy, RefreshesInTheBackgroundWhenGoodLateAndFarEnough) {
  constexpr auto active = ApplicationState::active;
  constexpr auto inactive = ApplicationState::inactive;
  constexpr auto background = ApplicationState::background;
  struct Row {
    const char* name;
    FixSeen fix;
    bool expected;
  };
  const Row rows[] = {
      {"good, late, far", {background, 5.0, 600s, 5000.0}, true},
      {"the same while active", {active, 5.0, 600s, 5000.0}, false},
      {"the same while inactive", {inactive, 5.0, 600s, 5000.0}, true},
      {"just below 150 m", {background, 5.0, 600s, std::nextafter(150.0, 0.0)}, false},
      {"150 m", {background, 5.0, 600s, 150.0}, true},
      {"just below 120 s", {background, 5.0, 120s - 1us, 5000.0}, false},
      {"120 s", {background, 5.0, 120s, 5000.0}, true},
      {"clock set back", {background, 5.0, -1h, 5000.0}, false},
      {"accuracy 250 m", {background, 250.0, 600s, 5000.0}, true},
      {"accuracy 250.1 m", {background, 250.1, 600s, 5000.0}, false},
      {"accuracy 0", {background, 0.0, 600s, 5000.0}, true},
      {"accuracy no number", {background, nan, 600s, 5000.0}, false},
      {"not valid", {background, -1.0, 600s, 5000.0}, false},
      {"distance no number", {background, 5.0, 600s, nan}, true},
      {"never fetched", {background, 5.0, {}, {}}, true},
  };
  for (const Row& row : rows) EXPECT_EQ(wantsBackgroundRefresh(row.fix), row.expected) << row.name;
}

TEST(RefreshPolicy, WritesWholeMetres) {
  const std::pair<std::optional<double>, const char*> rows[] = {
      {187.99, "187"}, {20003931.4585, "20003931"}, {{}, "∞"}, {nan, "∞"}, {infinity, "∞"}};
  for (const auto& [metres, expected] : rows) EXPECT_EQ(wholeMetres(metres), expected);
}

}  // namespace
}  // namespace orlan::refreshPolicy
