#pragma once

#include <limits>

#include "orlan/platform/Coordinate.hpp"
#include "orlan/platform/Polygon.hpp"

namespace orlan {

/// Everything at most `metres` from one point on the ellipsoid, for questions about many vertices: bounds
/// that cost a few multiplications decide nearly all of them, the geodesic distance decides the rest. Never
/// answers differently from computing every distance.
class Vicinity {
 public:
  Vicinity(Coordinate point, double metres);

  /// `distance(point, vertex) <= metres`.
  [[nodiscard]] bool contains(Coordinate vertex) const;

  /// False only when no vertex in this closed box is in the vicinity.
  [[nodiscard]] bool mayReach(const Polygon::Box& vertices) const {
    const bool apart = (vertices.maxLatitude < south_) | (vertices.minLatitude > north_);
    const bool aside = (vertices.longitude.max < west_) | (vertices.longitude.min > east_);
    const bool aroundTheGlobe = (vertices.longitude.min < farWest_) | (vertices.longitude.max > farEast_);
    return !(apart | (aside & !aroundTheGlobe));
  }

 private:
  static constexpr double infinity = std::numeric_limits<double>::infinity();

  /// Metres a degree, somewhere in the vicinity the shortest and somewhere the longest.
  struct Lengths {
    double shortest = 0.0;
    double longest = 0.0;
  };

  void boundLongitudes(double reach);

  Coordinate point_;
  double metres_;

  // Nothing beyond these is near; as they stand here, nothing is anywhere.
  double latitudeReach_ = -1.0;
  double south_ = infinity;
  double north_ = -infinity;

  // Only for a small vicinity away from the poles, elsewhere longitudes decide nothing. More than half the
  // globe apart, the short way is the other way round.
  bool bounded_ = false;
  double longitudeReach_ = infinity;
  double west_ = -infinity;
  double east_ = infinity;
  double farWest_ = -infinity;
  double farEast_ = infinity;
  Lengths meridian_;
  Lengths parallel_;
  double squareOutside_ = infinity;  // a squared lower bound above this: too far
  double squareInside_ = -1.0;       // a squared upper bound up to this: near
};

}  // namespace orlan
