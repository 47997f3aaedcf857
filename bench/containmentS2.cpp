#include <s2/mutable_s2shape_index.h>
#include <s2/s2contains_point_query.h>
#include <s2/s2latlng.h>
#include <s2/s2loop.h>

#include <optional>

#include "bench/containmentPeers.hpp"

namespace orlan::bench {
namespace {

S2Point pointOf(Coordinate place) {
  return S2LatLng::FromDegrees(place.latitude, place.longitude).ToPoint();
}

class S2 {
 public:
  explicit S2(const Rings& rings) {
    for (const auto& ring : rings) {
      std::vector<S2Point> points;
      for (const Coordinate& each : ring) points.push_back(pointOf(each));
      auto loop = std::make_unique<S2Loop>();
      loop->set_s2debug_override(S2Debug::DISABLE);
      loop->Init(points);
      loop->Normalize();
      index_.Add(std::make_unique<S2Loop::OwningShape>(std::move(loop)));
    }
    index_.ForceBuild();
    query_.emplace(&index_);  // it keeps an iterator of what is there now
  }

  std::size_t count(Coordinate place) {
    std::size_t found = 0;
    query_->VisitContainingShapes(pointOf(place), [&](S2Shape*) {
      ++found;
      return true;
    });
    return found;
  }

 private:
  MutableS2ShapeIndex index_;
  std::optional<S2ContainsPointQuery<MutableS2ShapeIndex>> query_;
};

}  // namespace

Counter s2Counter(const Rings& rings) {
  return [all = std::make_shared<S2>(rings)](Coordinate place) { return all->count(place); };
}

}  // namespace orlan::bench
