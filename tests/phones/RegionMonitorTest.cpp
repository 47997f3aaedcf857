#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "phones/common/RegionMonitor.hpp"

namespace orlan::phone {
namespace {

constexpr double metre = 1.0 / 110574.4;  // of latitude at the equator

CircularRegion circle(const std::string& identifier, double radius = 100.0) {
  return {identifier, {{0.0, 0.0}, radius}};
}

Location northOfIt(double metres, double accuracy = 5.0) {
  return {{metres * metre, 0.0}, accuracy, {}};
}

std::string crossings(RegionMonitor& monitor, const Location& fix) {
  std::string text;
  for (const auto& [action, region] : monitor.update(fix)) {
    text += (action == RegionAction::enter ? "+" : "-") + region.identifier;
  }
  return text;
}

TEST(RegionMonitor, EntersAtTheRadiusAndLeavesClearlyBeyondIt) {
  RegionMonitor monitor;
  monitor.start(circle("a"));
  const struct {
    const char* name;
    Location fix;
    const char* expected;
  } rows[] = {
      {"outside from the start is no exit", northOfIt(500), ""},
      {"just outside", northOfIt(101), ""},
      {"inside", northOfIt(99), "+a"},
      {"still inside", northOfIt(0), ""},
      {"outside by less than the accuracy", northOfIt(104, 5), ""},
      {"outside, the fix is worthless", northOfIt(5000, -1), ""},
      {"outside, the fix is not a number", {{std::nan(""), 0.0}, 5.0, {}}, ""},
      {"outside, beyond the globe", {{95.0, 0.0}, 5.0, {}}, ""},
      {"outside by less than a bad accuracy", northOfIt(195, 100), ""},
      {"outside by more than the accuracy", northOfIt(106, 5), "-a"},
      {"still outside", northOfIt(106, 0), ""},
      {"in again, with a bad accuracy", northOfIt(50, 3000), "+a"},
      {"the margin has its limit", northOfIt(201, 3000), "-a"},
  };
  for (const auto& row : rows) EXPECT_EQ(crossings(monitor, row.fix), row.expected) << row.name;
}

TEST(RegionMonitor, TheRadiusIsInsideAndTheMarginIsNotOutside) {
  const Location edge = northOfIt(100, 0);
  const double radius = distance(edge.coordinate, {0.0, 0.0});
  RegionMonitor monitor;
  monitor.start(circle("too small", std::nextafter(radius, 0.0)));
  monitor.start(circle("just right", radius));
  EXPECT_EQ(crossings(monitor, edge), "+just right");
  monitor.setInside("too small", true);
  EXPECT_EQ(crossings(monitor, edge), "-too small");
}

TEST(RegionMonitor, WatchesAtMostTwentyFiniteCircles) {
  RegionMonitor monitor;
  const double nan = std::nan("");
  EXPECT_FALSE(monitor.start({"nan", {{nan, 0.0}, 100.0}}));
  EXPECT_FALSE(monitor.start({"infinite", {{0.0, std::numeric_limits<double>::infinity()}, 100.0}}));
  EXPECT_FALSE(monitor.start({"radius", {{0.0, 0.0}, nan}}));
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(monitor.start(circle(std::to_string(i)))) << i;
  EXPECT_FALSE(monitor.start(circle("one too many")));
  EXPECT_TRUE(monitor.start(circle("7", 1.0)));
  EXPECT_EQ(monitor.regions().at(7), circle("7", 1.0));  // replaced in its place
  EXPECT_EQ(monitor.stop("3"), circle("3"));
  EXPECT_EQ(monitor.stop("3"), std::nullopt);
  EXPECT_TRUE(monitor.start(circle("now there is room")));
}

TEST(RegionMonitor, AReplacedRegionIsEnteredAnew) {
  RegionMonitor monitor;
  monitor.start(circle("a"));
  EXPECT_EQ(crossings(monitor, northOfIt(0)), "+a");
  monitor.start({"a", {{std::nan(""), 0.0}, 100.0}});  // leaves the old one as it is
  EXPECT_EQ(crossings(monitor, northOfIt(0)), "");
  monitor.start(circle("a"));
  EXPECT_EQ(crossings(monitor, northOfIt(0)), "+a");
}

TEST(RegionMonitor, UnwantedCrossingsAreNotedButNotTold) {
  RegionMonitor monitor;
  monitor.start({"exit only", {{0.0, 0.0}, 100.0}, false, true});
  monitor.start({"entry only", {{0.0, 0.0}, 100.0}, true, false});
  EXPECT_EQ(crossings(monitor, northOfIt(0)), "+entry only");
  EXPECT_EQ(crossings(monitor, northOfIt(500)), "-exit only");
  EXPECT_EQ(crossings(monitor, northOfIt(0)), "+entry only");
}

}  // namespace
}  // namespace orlan::phone
