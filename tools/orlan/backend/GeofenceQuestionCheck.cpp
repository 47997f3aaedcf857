#include <fmt/format.h>

#include <array>

#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/JsonCheck.hpp"
#include "tools/orlan/backend/ValueForms.hpp"

namespace orlan::devbackend {
namespace {

void checkDegrees(json::Node body, std::string_view key, double limit, Problems& problems) {
  const auto value = stringMember(body, key);
  if (!value) return;
  if (const auto problem = degreesProblem(*value, limit)) {
    problems.push_back(fmt::format("body.{}: {}", key, *problem));
  }
}

}  // namespace

void checkGeofenceQuestion(const Request& request, Problems& problems) {
  constexpr std::array members{ExpectedMember{"latitude", json::Kind::string},
                               ExpectedMember{"longitude", json::Kind::string},
                               ExpectedMember{"segmentationTags", json::Kind::string},
                               ExpectedMember{"distance", json::Kind::integer}};
  const auto document = parseObject(request, members, problems);
  if (!document) return;
  const auto body = document->root();
  checkDegrees(body, "latitude", 90.0, problems);
  checkDegrees(body, "longitude", 180.0, problems);
  const auto distance = member(body, "distance");
  if (distance && distance->kind() == json::Kind::integer && distance->integer() != 10) {
    problems.push_back(fmt::format("body.distance: expected 10, found {}", json::print(distance->value())));
  }
}

}  // namespace orlan::devbackend
