#include "orlan/platform/Coordinate.hpp"

#include <GeographicLib/Geodesic.hpp>
#include <limits>

namespace orlan {

double distance(Coordinate a, Coordinate b) {
  if (!isOnGlobe(a) || !isOnGlobe(b)) return std::numeric_limits<double>::quiet_NaN();
  double metres = 0.0;
  GeographicLib::Geodesic::WGS84().Inverse(a.latitude, a.longitude, b.latitude, b.longitude, metres);
  return metres;
}

}  // namespace orlan
