#include "orlan/platform/Polygon.hpp"

#include <algorithm>
#include <utility>

#include "orlan/platform/PolygonShape.hpp"
#include "orlan/platform/RayCasting.hpp"
#include "orlan/platform/VertexDistance.hpp"

namespace orlan {

Polygon::Polygon(std::vector<Coordinate> vertices)
    : shape_(std::make_shared<const Shape>(std::move(vertices))) {}

std::span<const Coordinate> Polygon::coordinates() const {
  return shape_->vertices;
}

Polygon::Box Polygon::box() const {
  return shape_->box;
}

Polygon::Box Polygon::vertexBox() const {
  return shape_->vertexBox;
}

const Place& Polygon::centre() const {
  return shape_->centre;
}

bool Polygon::rayCastingContains(Coordinate point) const {
  const Shape& shape = *shape_;
  if (!boxContains(shape.box, point)) return false;
  const Coordinate* ring = shape.vertices.data();
  const std::size_t last = shape.vertices.size() - 1;
  bool inside = false;
  for (const std::uint32_t edge : shape.bins.at(point.longitude)) {
    const Coordinate from = ring[edge > 0 ? edge - 1 : last];
    const Coordinate to = ring[edge];
    // Without a branch: here about half of the edges straddle, and which ones is as good as random.
    const bool straddled = straddles(from, to, point.longitude);
    const bool further = crossingLatitude(from, to, point.longitude) > point.latitude;
    inside ^= straddled & further;
  }
  return inside;
}

bool Polygon::hasVertexWithin(Coordinate point, double metres) const {
  return hasVertexIn(Vicinity(point, metres));
}

bool Polygon::hasVertexIn(const Vicinity& vicinity) const {
  return vicinity.mayReach(shape_->vertexBox) &&
         std::any_of(shape_->vertices.begin(), shape_->vertices.end(),
                     [&](Coordinate vertex) { return vicinity.contains(vertex); });
}

bool operator==(const Polygon& a, const Polygon& b) {
  return a.shape_ == b.shape_ || a.shape_->vertices == b.shape_->vertices;
}

bool rayCastingContains(std::span<const Coordinate> ring, Coordinate point) {
  if (ring.size() < 3) return false;
  bool inside = false;
  Coordinate from = ring.back();
  for (const Coordinate& to : ring) {
    if (straddles(from, to, point.longitude) &&
        crossingLatitude(from, to, point.longitude) > point.latitude) {
      inside = !inside;
    }
    from = to;
  }
  return inside;
}

}  // namespace orlan
