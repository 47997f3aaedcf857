#pragma once

#include <memory>

namespace orlan {

class TrackedPolygons;

/// Takes the campaigns' polygons whenever they are fetched. Main thread.
class PolygonSink {
 public:
  virtual ~PolygonSink() = default;
  virtual void takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) = 0;
};

}  // namespace orlan
