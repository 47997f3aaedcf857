#include "requests.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace orlan::devbackend {
namespace {

constexpr char deviceRecord[] =
    R"({"app_name":"Host","api_key":"key-1","sdk_version":"1.0","platform":"iOS","os_version":"17.0",)"
    R"("device_model":"Phone","device_name":"Anna's phone","manufacturer":"Apple","country":"en_GB",)"
    R"("language":"en_GB","device_id":"9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A","segmentations":"a,b",)"
    R"("correlation_id":"","orlan_id":"0","device_token":"pending"})";

Request post(std::string target, std::vector<Header> headers, std::string body) {
  headers.insert(headers.begin(), {"Host", "127.0.0.1"});
  headers.emplace_back("Content-Length", std::to_string(body.size()));
  return {
      .method = "POST", .target = std::move(target), .headers = std::move(headers), .body = std::move(body)};
}

std::vector<Header> jsonHeaders() {
  return {{"Content-Type", "application/json"}, {"Accept", "application/json"}, {"ApiKey", "key-1"}};
}

void addAppScoped(std::vector<Header>& headers) {
  headers.insert(headers.end(), {{"x-company-api-key", "company-key"},
                                 {"x-app-id", "app-7"},
                                 {"x-app-api-key", "app-key"},
                                 {"x-app-identifier", "com.example.host"},
                                 {"x-platform", "ios"}});
}

}  // namespace

namespace good {

Request registration() {
  return post("/api/device-registerd/create", jsonHeaders(), deviceRecord);
}

Request tokenSync() {
  auto request = edited(registration(), R"("orlan_id":"0")", R"("orlan_id":"1001")");
  request =
      edited(request, "9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A", "device-9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A");
  return edited(request, "pending", "00ab");
}

Request segments() {
  return post("/api/segments", {{"Content-Type", "application/json"}, {"ApiKey", "key-1"}},
              R"({"segmentation":["gold","evening"],"device_registered_id":"device-1"})");
}

Request activity(std::string_view edgeText) {
  const std::vector<std::pair<std::string, std::string>> parts{{"device_registered_id", "device-1"},
                                                               {"curated_notification_id", "42"},
                                                               {"location_id", "7"},
                                                               {"type", "geofence"},
                                                               {"activity", "geofence_entry"},
                                                               {"time", "2025-03-14 09:26:53"},
                                                               {"latitude", "51.5"},
                                                               {"longitude", "-0.12"}};
  const std::string edge(edgeText);
  std::string body;
  for (const auto& [name, value] : parts) {
    body +=
        "--" + edge + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + value + "\r\n";
  }
  body += "--" + edge + "--\r\n";
  return post("/api/activities",
              {{"Content-Type", "multipart/form-data; boundary=" + edge}, {"ApiKey", "key-1"}}, body);
}

Request pluginActivity() {
  return post("/api/plugin-activity/create",
              {{"Content-Type", "application/x-www-form-urlencoded"}, {"ApiKey", "key-1"}},
              "device_registered_id=9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A&time=2025-03-14 09:26:53"
              "&activity=plugin_started");
}

Request survey() {
  return post(
      "/api/survey-response", jsonHeaders(),
      R"({"device_registered_id":"device-1","curated_notification_id":42,"activity":"survey_activity",)"
      R"("location_id":7,"responses":[{"question_id":1,"type":"RATING","value":"4"},)"
      R"({"question_id":2,"type":"SINGLE_CHOICE","value":"","choice":[{"choice_id":11}]}]})");
}

Request surveyEvent() {
  return post(
      "/api/survey-response", jsonHeaders(),
      R"({"device_registered_id":"device-1","curated_notification_id":42,"activity":"survey_shown"})");
}

Request configuration() {
  std::vector<Header> headers{{"Host", "127.0.0.1"}, {"Accept", "application/json"}};
  addAppScoped(headers);
  headers.emplace_back("x-api-key", "company-key");
  return {.method = "GET", .target = "/api//get-config", .headers = std::move(headers), .body = ""};
}

Request legacyConfiguration() {
  return {.method = "GET",
          .target = "/get-config",
          .headers = {{"Accept", "application/json"}, {"x-api-key", "key-1"}},
          .body = ""};
}

Request geofenceCheck() {
  std::vector<Header> headers{{"Content-Type", "application/json"}, {"Accept", "application/json"}};
  addAppScoped(headers);
  return post("/api/check-geofence", headers,
              R"({"latitude":"51.0","longitude":"-0.12","segmentationTags":"","distance":10})");
}

}  // namespace good

Request edited(Request request, std::string_view from, std::string_view to) {
  const auto at = request.body.find(from);
  if (at == std::string::npos) {
    ADD_FAILURE() << "nothing to replace: " << from;
  } else {
    request.body.replace(at, from.size(), to);
  }
  for (auto& [name, value] : request.headers) {
    if (name == "Content-Length") value = std::to_string(request.body.size());
  }
  return request;
}

Request withHeader(Request request, std::string_view name, std::string_view value) {
  for (auto& header : request.headers) {
    if (header.first != name) continue;
    header.second = value;
    return request;
  }
  request.headers.emplace_back(name, value);
  return request;
}

Request withoutHeader(Request request, std::string_view name) {
  std::erase_if(request.headers, [&](const Header& header) { return header.first == name; });
  return request;
}

}  // namespace orlan::devbackend
