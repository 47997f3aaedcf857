#include "tools/orlan/simulate/valueForms.hpp"

#include "orlan/surveys/SurveyFields.hpp"

namespace orlan::simulate {

json::Value formOf(const Error& error) {
  return json::Object{{"domain", error.domain}, {"code", error.code}, {"description", error.description}};
}

json::Value formOf(const Location& fix) {
  return json::Object{{"latitude", fix.coordinate.latitude},
                      {"longitude", fix.coordinate.longitude},
                      {"accuracy", fix.horizontalAccuracy}};
}

json::Value formOf(const std::vector<Polygon>& polygons) {
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

json::Value formOf(const std::vector<Circle>& circles) {
  json::Array list;
  for (const Circle& circle : circles) {
    list.push_back(json::Object{{"latitude", circle.centre.latitude},
                                {"longitude", circle.centre.longitude},
                                {"radius", circle.radius}});
  }
  return list;
}

json::Value formOf(const NotificationResponse& response) {
  const NotificationContent& content = response.request.content;
  return json::Object{{"identifier", response.request.identifier},
                      {"actionIdentifier", response.actionIdentifier},
                      {"title", content.title},
                      {"body", content.body},
                      {"userInfo", content.userInfo}};
}

json::Value formOf(const OrlanNotificationDetails& details) {
  return json::Object{{"id", details.id()},
                      {"headline", details.headline()},
                      {"body", details.body()},
                      {"mediaType", details.mediaType()},
                      {"mediaURL", details.mediaURL()},
                      {"ctaLabel", details.ctaLabel()},
                      {"ctaURL", details.ctaURL()},
                      {"notifID", details.notifID()},
                      {"locationID", details.locationID()},
                      {"questions", details.questions() ? json::encode(*details.questions()) : json::Value()},
                      {"completionMessage", details.completionMessage()}};
}

}  // namespace orlan::simulate
