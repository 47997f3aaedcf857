#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "orlan/platform/Coordinate.hpp"

namespace orlan {

class Place;
class Vicinity;

/// An immutable ring of vertices in the order given; it closes itself, the first vertex is not repeated.
/// Copies share one object, which also holds what makes containment fast, computed once at construction.
/// Coordinates may be anything a double can hold. Safe to read from any thread.
class Polygon {
 public:
  Polygon() : Polygon(std::vector<Coordinate>{}) {}
  explicit Polygon(std::vector<Coordinate> vertices);

  [[nodiscard]] std::span<const Coordinate> coordinates() const;
  [[nodiscard]] std::size_t pointCount() const { return coordinates().size(); }

  /// Even-odd ray casting in plain latitude and longitude: bit-identical with `rayCastingContains` on the
  /// same vertices for every input, but looks at few edges. No allocation.
  [[nodiscard]] bool rayCastingContains(Coordinate point) const;

  /// Whether some vertex lies at most `metres` from `point` (geodesic distance). Decides by cheap bounds
  /// where they can, never differently from computing every distance.
  [[nodiscard]] bool hasVertexWithin(Coordinate point, double metres) const;

  /// The same with the bounds computed beforehand, for asking many polygons (`VertexDistance.hpp`).
  [[nodiscard]] bool hasVertexIn(const Vicinity& vicinity) const;

  struct LongitudeRange {
    double min = 0.0;
    double max = 0.0;
  };

  /// A box outside of which nothing is inside, exact for the formula. Half-open: `min <= longitude < max` is
  /// necessary for `rayCastingContains`, and empty (0 to 0) when nothing can be inside. Latitudes are
  /// unbounded (infinite) for a ring whose edges are too steep or not finite for the shortcut.
  struct Box {
    LongitudeRange longitude;
    double minLatitude = 0.0;
    double maxLatitude = 0.0;
  };
  [[nodiscard]] Box box() const;

  /// The closed box of the vertices that lie on the ground (longitude finite, latitude at most 90 degrees);
  /// its ends are exchanged, and infinite, when there are none.
  [[nodiscard]] Box vertexBox() const;

  /// The mean of the vertices, in plain degrees (not for rings across 180 degrees). Not measurable without
  /// vertices, or when one of them is not on the globe.
  [[nodiscard]] const Place& centre() const;

  /// The same vertices, by identity or by value.
  friend bool operator==(const Polygon& a, const Polygon& b);

 private:
  struct Shape;
  std::shared_ptr<const Shape> shape_;
};

/// The reference formula, edge by edge. Latitude is x, longitude is y; a ray through a vertex toggles once;
/// fewer than three vertices contain nothing; not for rings across 180 degrees. O(n), no allocation.
[[nodiscard]] bool rayCastingContains(std::span<const Coordinate> ring, Coordinate point);

/// Non-zero winding test on the spherical Mercator projection of vertices and point. On the outline either
/// answer may come. For hosts that draw the polygon and want the test that matches the drawing.
[[nodiscard]] bool isInside(Coordinate point, const Polygon& polygon);

}  // namespace orlan
