// One place against all campaign areas: which of them contain it.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "bench/Timing.hpp"
#include "bench/Town.hpp"
#include "bench/containmentPeers.hpp"
#include "bench/rows.hpp"
#include "orlan/base/json.hpp"
#include "orlan/campaigns/PolygonSet.hpp"

namespace orlan::bench {
namespace {

/// Areas, and places all over them.
struct Ground {
  Rings rings;
  std::vector<Coordinate> places;
};

Ground town(std::size_t count) {
  Town made(count);
  return {made.areas, made.walk()};
}

Ground denseCity(std::size_t count) {
  Town made = Town::denseCity(count);
  return {made.areas, made.walk()};
}

double numberAt(const json::Value& pair, std::size_t index) {
  return (*pair.array())[index].number().value();
}

/// The wards of a district, recorded, in a GeoJSON file.
Rings wards() {
  std::ifstream file(ORLAN_WARDS);
  const auto map = json::parse(std::string(std::istreambuf_iterator<char>(file), {}));
  if (!map) std::abort();
  Rings rings;
  for (const auto& feature : *map->object()->find("features")->array()) {
    const auto& outlines = *feature.object()->find("geometry")->object()->find("coordinates")->array();
    std::vector<Coordinate> ring;
    for (const auto& pair : *outlines.front().array()) {
      ring.push_back({numberAt(pair, 1), numberAt(pair, 0)});
    }
    ring.pop_back();  // GeoJSON repeats the first
    rings.push_back(std::move(ring));
  }
  return rings;
}

/// Real boundaries: the district again and again, side by side.
Ground country(std::size_t count) {
  static const Rings district = wards();
  constexpr double height = 0.3;  // degrees
  constexpr double width = 0.5;
  const auto tiles = static_cast<double>(count / district.size() + 1);
  const auto columns = static_cast<std::size_t>(std::ceil(std::sqrt(tiles)));
  Ground ground;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t tile = i / district.size();
    const double north = height * static_cast<double>(tile / columns);
    const double east = width * static_cast<double>(tile % columns);
    ground.rings.push_back(district[i % district.size()]);
    for (Coordinate& vertex : ground.rings.back()) {
      vertex.latitude += north;
      vertex.longitude += east;
    }
  }
  std::mt19937_64 random(7);
  for (int i = 0; i < 1024; ++i) {  // a place beside a vertex: somewhere in a ward, or in none
    const auto& ring = ground.rings[random() % ground.rings.size()];
    const Coordinate vertex = ring[random() % ring.size()];
    const auto aside = [&] { return 0.01 * (static_cast<double>(random() % 1000) / 500.0 - 1.0); };
    ground.places.push_back({vertex.latitude + aside(), vertex.longitude + aside()});
  }
  return ground;
}

/// What each finds has to be about the same: edges are not quite the same lines on a sphere.
void checkAgreement(const Ground& ground, const Counter& ours, const Counter& peer) {
  std::size_t mine = 0;
  std::size_t theirs = 0;
  for (const Coordinate& place : ground.places) {
    mine += ours(place);
    theirs += peer(place);
  }
  if (mine + mine / 100 + 10 < theirs || theirs + theirs / 100 + 10 < mine) {
    std::fprintf(stderr, "containment: %zu found, a peer finds %zu\n", mine, theirs);
    std::abort();
  }
}

void measure(Row& row, const Ground& ground) {
  std::vector<CampaignPolygon> polygons;
  for (const auto& ring : ground.rings) polygons.push_back({Polygon(ring), CampaignData::Campaign{}});
  const PolygonSet set(std::move(polygons));
  const Counter ours = [&set](Coordinate place) { return set.containing(place).size(); };
  std::vector<Way> ways;
  for (const auto& [name, counter] :
       {std::pair{"ours", ours}, std::pair{"GEOS", geosCounter(ground.rings)},
        std::pair{"S2", s2Counter(ground.rings)}, std::pair{"Boost", boostCounter(ground.rings)}}) {
    checkAgreement(ground, ours, counter);
    ways.push_back({name, [&places = ground.places, counter = counter] {
                      return nanoseconds([&] {
                               std::size_t found = 0;
                               for (const Coordinate& place : places) found += counter(place);
                               keep(found);
                             }) /
                             static_cast<double>(places.size());
                    }});
  }
  row.measure(static_cast<double>(ground.rings.size()), ways);
}

}  // namespace

void containment(Table& table) {
  struct Kind {
    const char* work;
    Ground (*ground)(std::size_t);
  };
  for (const Kind kind : {Kind{"Containment, a town", town}, Kind{"Containment, a dense city", denseCity},
                          Kind{"Containment, real boundaries", country}}) {
    Row& row = table.emplace_back(Row{kind.work, "polygons", Unit::nanoseconds, {}});
    for (const std::size_t count : {20, 100, 1'000, 10'000}) measure(row, kind.ground(count));
  }
}

}  // namespace orlan::bench
