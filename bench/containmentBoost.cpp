#define BOOST_ALLOW_DEPRECATED_HEADERS  // its own headers use them, and say so at each build
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>
#include <boost/geometry/index/rtree.hpp>

#include "bench/containmentPeers.hpp"

namespace orlan::bench {
namespace {

namespace geometry = boost::geometry;
using Point = geometry::model::d2::point_xy<double>;
using Ring = geometry::model::ring<Point, false>;
using Box = geometry::model::box<Point>;
using Entry = std::pair<Box, std::size_t>;

class Boost {
 public:
  explicit Boost(const Rings& rings) {
    std::vector<Entry> entries;
    for (const auto& ring : rings) {
      Ring outline;
      for (const Coordinate& each : ring) outline.emplace_back(each.longitude, each.latitude);
      geometry::correct(outline);
      entries.emplace_back(geometry::return_envelope<Box>(outline), rings_.size());
      rings_.push_back(std::move(outline));
    }
    tree_ = Tree(entries);
  }

  [[nodiscard]] std::size_t count(Coordinate place) const {
    const Point point(place.longitude, place.latitude);
    std::size_t found = 0;
    for (auto each = tree_.qbegin(geometry::index::intersects(point)); each != tree_.qend(); ++each) {
      if (geometry::within(point, rings_[each->second])) ++found;
    }
    return found;
  }

 private:
  using Tree = geometry::index::rtree<Entry, geometry::index::rstar<16>>;
  std::vector<Ring> rings_;
  Tree tree_;
};

}  // namespace

Counter boostCounter(const Rings& rings) {
  return [all = std::make_shared<Boost>(rings)](Coordinate place) { return all->count(place); };
}

}  // namespace orlan::bench
