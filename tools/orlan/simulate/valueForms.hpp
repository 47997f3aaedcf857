#pragma once

#include <vector>

#include "orlan/base/Error.hpp"
#include "orlan/base/json.hpp"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Location.hpp"
#include "orlan/platform/Polygon.hpp"

/// How values of the library look in a transcript.
namespace orlan::simulate {

[[nodiscard]] inline json::Value formOf(const Error& error) {
  return json::Object{{"domain", error.domain}, {"code", error.code}, {"description", error.description}};
}

[[nodiscard]] inline json::Value formOf(const Location& fix) {
  return json::Object{{"latitude", fix.coordinate.latitude},
                      {"longitude", fix.coordinate.longitude},
                      {"accuracy", fix.horizontalAccuracy}};
}

/// Lists of [latitude, longitude].
[[nodiscard]] inline json::Value formOf(const std::vector<Polygon>& polygons) {
  json::Array list;
  for (const Polygon& polygon : polygons) {
    json::Array ring;
    for (const Coordinate vertex : polygon.coordinates()) {
      ring.push_back(json::Array{vertex.latitude, vertex.longitude});
    }
    list.push_back(std::move(ring));
  }
  return list;
}

[[nodiscard]] inline json::Value formOf(const std::vector<Circle>& circles) {
  json::Array list;
  for (const Circle& circle : circles) {
    list.push_back(json::Object{{"latitude", circle.centre.latitude},
                                {"longitude", circle.centre.longitude},
                                {"radius", circle.radius}});
  }
  return list;
}

}  // namespace orlan::simulate
