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
  const Walk corner = way({{{0, 0}, 0}, {{0, 4}, 4}, {{2, 4}, 5}});
  const Walk jump = way({{{0, 0}, 0}, {{5, 5}, 0}, {{5, 6}, 1}});  // two points of the same time
  const std::pair<Track, std::vector<Coordinate>> rows[] = {
      {{2s, corner}, {{0, 0}, {0, 2}, {0, 4}, {2, 4}}},
      {{1h, corner}, {{0, 0}, {2, 4}}},
      {{1s, jump}, {{5, 5}, {5, 6}}},
  };
  for (const auto& [track, expected] : rows) {
    std::vector<Coordinate> places;
    for (std::size_t i = 0; i < track.size(); ++i) places.push_back(track.fix(i).coordinate);
    EXPECT_EQ(places, expected);
  }
}

TEST(Timeline, WalksAndStepsShareOneOrder) {
  Scenario scenario;
  scenario.steps.push_back({0s, "track", Track{2s, way({{{0, 0}, 0}, {{0, 1}, 6}})}});
  scenario.steps.push_back({2s, "relaunch", Act()});
  scenario.until = 4s;
  Timeline timeline(scenario);
  std::vector<std::tuple<Duration, std::size_t, std::size_t>> order;
  while (const auto moment = timeline.next()) order.emplace_back(moment->at, moment->step, moment->fix);
  EXPECT_EQ(order, (decltype(order){{0s, 0, 0}, {2s, 0, 1}, {2s, 1, 0}, {4s, 0, 2}}));
  EXPECT_EQ(timeline.size(), order.size());
}

}  // namespace
}  // namespace orlan::simulate
