#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Polygon.h>
#include <geos/index/strtree/TemplateSTRtree.h>

#include "bench/containmentPeers.hpp"

namespace orlan::bench {
namespace {

using Locator = geos::algorithm::locate::IndexedPointInAreaLocator;

class Geos {
 public:
  explicit Geos(const Rings& rings) {
    for (const auto& ring : rings) {
      std::vector<geos::geom::Coordinate> places;
      for (const Coordinate& each : ring) places.emplace_back(each.longitude, each.latitude);
      places.push_back(places.front());
      auto outline = factory_->createLinearRing(
          std::make_unique<geos::geom::CoordinateArraySequence>(std::move(places)));
      polygons_.push_back(factory_->createPolygon(std::move(outline)));
      locators_.push_back(std::make_unique<Locator>(*polygons_.back()));
      tree_.insert(*polygons_.back()->getEnvelopeInternal(), locators_.back().get());
    }
  }

  std::size_t count(Coordinate place) {
    const geos::geom::Coordinate point(place.longitude, place.latitude);
    std::size_t found = 0;
    tree_.query(geos::geom::Envelope(point), [&](Locator* locator) {
      if (locator->locate(&point) != geos::geom::Location::EXTERIOR) ++found;
    });
    return found;
  }

 private:
  geos::geom::GeometryFactory::Ptr factory_ = geos::geom::GeometryFactory::create();
  std::vector<std::unique_ptr<geos::geom::Polygon>> polygons_;
  std::vector<std::unique_ptr<Locator>> locators_;
  geos::index::strtree::TemplateSTRtree<Locator*> tree_;
};

}  // namespace

Counter geosCounter(const Rings& rings) {
  return [all = std::make_shared<Geos>(rings)](Coordinate place) { return all->count(place); };
}

}  // namespace orlan::bench
