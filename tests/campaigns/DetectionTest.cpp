#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "campaigns/Fixtures.hpp"
#include "orlan/campaigns/Detection.hpp"

namespace orlan {
namespace {

using test::campaignPolygon;

const std::vector<Coordinate> square{{51.5, -0.12}, {51.5, -0.11}, {51.51, -0.11}, {51.51, -0.12}};
constexpr Coordinate middle{51.505, -0.115};
constexpr Coordinate tenMetresSouth{51.4999101, -0.12};
constexpr Coordinate fiveMetresSouth{51.499955, -0.12};

class Detection : public test::WithLogger {
 protected:
  std::vector<GeofenceResult> detect(Coordinate point, double accuracy, const PolygonSet& set) {
    return detectGeofences(Location{point, accuracy, {}}, set, logger);
  }
};

TEST_F(Detection, ScalesConfidenceByAccuracy) {
  struct Row {
    double accuracy;
    double confidence;
  };
  const double infinity = std::numeric_limits<double>::infinity();
  const PolygonSet set({campaignPolygon(1, square)});
  for (const Row row :
       {Row{0, 1.0}, {5, 0.95}, {50, 0.5}, {90, 0.1}, {95, 0.1}, {-1, 1.01}, {infinity, 0.1}}) {
    for (const Coordinate point : {middle, tenMetresSouth}) {
      EXPECT_DOUBLE_EQ(detect(point, row.accuracy, set).at(0).confidence, row.confidence) << row.accuracy;
    }
  }
}

TEST_F(Detection, LooksForNearVerticesOnlyWithAPoorFix) {
  struct Row {
    const char* name;
    Coordinate point;
    double accuracy;
    bool bufferCheck;
  };
  const PolygonSet set({campaignPolygon(1, square)});
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const Row& row : {Row{"good fix", fiveMetresSouth, 20.0, false},
                         {"poor fix, vertex within half of it", tenMetresSouth, 20.1, true},
                         {"vertex between half of it and all of it", {51.4998562, -0.12}, 30.0, false},
                         {"beside an edge", {51.49999, -0.115}, 100.0, false},
                         {"no accuracy", tenMetresSouth, nan, false},
                         {"nowhere", {nan, nan}, 1000.0, false}}) {
    seen.lines.clear();
    const auto results = detect(row.point, row.accuracy, set);
    EXPECT_FALSE(results.at(0).isInside) << row.name;
    EXPECT_EQ(results.at(0).detectionMethod, "outside_polygon") << row.name;
    EXPECT_EQ(seen.messages().at(1), "  - Ray casting: false") << row.name;
    EXPECT_EQ(seen.messages().at(2), std::string("  - Buffer check: ") + (row.bufferCheck ? "true" : "false"))
        << row.name;
  }
}

TEST_F(Detection, KeepsTheOrderOfManyPolygons) {
  std::vector<CampaignPolygon> polygons;
  for (int i = 0; i < 200; ++i) {
    polygons.push_back(
        campaignPolygon(1000 - i, i % 3 == 0 ? square : std::vector<Coordinate>{{0, 0}, {0, 1}, {1, 0}}));
  }
  const auto results = detect(middle, 5.0, PolygonSet(std::move(polygons)));
  ASSERT_EQ(results.size(), 200u);
  const auto messages = seen.messages();
  ASSERT_EQ(messages.size(), 1400u);
  for (std::size_t i = 0; i < results.size(); ++i) {
    const std::int64_t id = 1000 - static_cast<std::int64_t>(i);
    const bool inside = i % 3 == 0;
    EXPECT_EQ(results[i], (GeofenceResult{id, id + 1000, inside, 0.95,
                                          inside ? "polygon_high_confidence" : "outside_polygon", 5.0}));
    EXPECT_EQ(messages[7 * i], "🔍 Polygon detection for campaign " + std::to_string(id) + ":");
    EXPECT_EQ(messages[7 * i + 1], inside ? "  - Ray casting: true" : "  - Ray casting: false");
  }
}

}  // namespace
}  // namespace orlan
