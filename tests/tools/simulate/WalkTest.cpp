#include <gtest/gtest.h>

#include "tools/orlan/simulate/Timeline.hpp"
#include "tools/orlan/simulate/Walk.hpp"

namespace orlan::simulate {
namespace {

using namespace std::chrono_literals;

Walk way(std::initializer_list<std::pair<Coordinate, double>> points) {
  Walk walk;
  for (const auto& [coordinate, seconds] : points) walk.push_back({{coordinate, 5.0}, seconds});
  return walk;
}

TEST(Walk, IsCutAtEachIntervalUntilTheEndIsReached) {
  const Walk walk = way({{{0, 0}, 0}, {{0, 4}, 4}, {{2, 4}, 5}});
  std::vector<Coordinate> places;
  for (const Fix& fix : cut(walk, 2s)) places.push_back(fix.coordinate);
  EXPECT_EQ(places, (std::vector<Coordinate>{{0, 0}, {0, 2}, {0, 4}, {2, 4}}));
  EXPECT_EQ(cut(walk, 1h).back().coordinate, (Coordinate{2, 4}));
  const auto jump = cut(way({{{0, 0}, 0}, {{5, 5}, 0}, {{5, 6}, 1}}), 1s);  // two points of the same time
  ASSERT_EQ(jump.size(), 2u);
  EXPECT_EQ(jump[0].coordinate, (Coordinate{5, 5}));
}

TEST(Timeline, WalksAndStepsShareOneOrder) {
  Scenario scenario;
  scenario.steps.push_back({0s, "track", Track{2s, std::vector<Fix>(4)}});
  scenario.steps.push_back({2s, "relaunch", Act()});
  scenario.until = 4s;
  std::vector<std::tuple<Duration, std::size_t, std::size_t>> order;
  for (const Moment& moment : timeline(scenario)) order.emplace_back(moment.at, moment.step, moment.fix);
  EXPECT_EQ(order, (decltype(order){{0s, 0, 0}, {2s, 0, 1}, {2s, 1, 0}, {4s, 0, 2}}));
}

}  // namespace
}  // namespace orlan::simulate
