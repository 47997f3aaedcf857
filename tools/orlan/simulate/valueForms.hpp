#pragma once

#include <string>
#include <vector>

#include "orlan/backend/OrlanConfiguration.hpp"
#include "orlan/base/Error.hpp"
#include "orlan/base/json.hpp"
#include "orlan/notifications/OrlanNotificationDetails.hpp"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Location.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/Polygon.hpp"

/// How values of the library look in a transcript.
namespace orlan::simulate {

[[nodiscard]] inline json::Value formOf(bool flag) {
  return flag;
}
[[nodiscard]] inline json::Value formOf(const std::string& text) {
  return text;
}
[[nodiscard]] inline json::Value formOf(const OrlanConfiguration& configuration) {
  return configuration.encode();
}

[[nodiscard]] json::Value formOf(const Error& error);
[[nodiscard]] json::Value formOf(const Location& fix);
[[nodiscard]] json::Value formOf(const std::vector<Polygon>& polygons);  // lists of [latitude, longitude]
[[nodiscard]] json::Value formOf(const std::vector<Circle>& circles);
[[nodiscard]] json::Value formOf(const NotificationResponse& response);
[[nodiscard]] json::Value formOf(const OrlanNotificationDetails& details);

}  // namespace orlan::simulate
