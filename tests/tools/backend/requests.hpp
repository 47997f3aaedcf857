#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tools/orlan/backend/Request.hpp"

/// A request to each endpoint with which nothing is wrong, as text: method and target, the headers, an empty
/// line, the body.
namespace orlan::devbackend::good {

inline constexpr char uuid[] = "9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A";  // in the registration, of the vendor
inline constexpr std::string_view boundary = "Boundary-0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D";

inline const std::string jsonHeaders = "Content-Type: application/json\nAccept: application/json\n";
inline const std::string appScoped =
    "x-company-api-key: company-key\nx-app-id: app-7\nx-app-api-key: app-key\n"
    "x-app-identifier: com.example.host\nx-platform: ios\n";

inline std::string part(std::string_view name, std::string_view value) {
  return "--" + std::string(boundary) + "\r\nContent-Disposition: form-data; name=\"" + std::string(name) +
         "\"\r\n\r\n" + std::string(value) + "\r\n";
}

inline const std::string registration =
    "POST /api/device-registerd/create\n" + jsonHeaders + "ApiKey: key-1\n\n" +
    R"({"app_name":"Host","api_key":"key-1","sdk_version":"1.0","platform":"iOS","os_version":"17.0",)"
    R"("device_model":"Phone","device_name":"Anna's phone","manufacturer":"Apple","country":"en_GB",)"
    R"("language":"en_GB","device_id":"9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A","segmentations":"a,b",)"
    R"("correlation_id":"","orlan_id":"0","device_token":"pending"})";

inline const std::string segments =
    "POST /api/segments\nContent-Type: application/json\nApiKey: key-1\n\n"
    R"({"segmentation":["gold","evening"],"device_registered_id":"device-1"})";

inline const std::string pluginActivity =
    "POST /api/plugin-activity/create\nContent-Type: application/x-www-form-urlencoded\nApiKey: key-1\n\n"
    "device_registered_id=9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A&time=2025-03-14 09:26:53"
    "&activity=plugin_started";

inline const std::string survey =
    "POST /api/survey-response\n" + jsonHeaders + "ApiKey: key-1\n\n" +
    R"({"device_registered_id":"device-1","curated_notification_id":42,"activity":"survey_activity",)"
    R"("location_id":7,"responses":[{"question_id":1,"type":"RATING","value":"4"},)"
    R"({"question_id":2,"type":"SINGLE_CHOICE","value":"","choice":[{"choice_id":11}]}]})";

/// App-scoped, with the legacy header.
inline const std::string configuration =
    "GET /api//get-config\nAccept: application/json\n" + appScoped + "x-api-key: company-key\n\n";

inline const std::string legacyConfiguration =
    "GET /get-config\nAccept: application/json\nx-api-key: key-1\n\n";

/// App-scoped, without the legacy header.
inline const std::string geofenceCheck = "POST /api/check-geofence\n" + jsonHeaders + appScoped + "\n" +
                                         R"({"latitude":"51.0","longitude":"-0.12","segmentationTags":"",)"
                                         R"("distance":10})";

inline const std::string activity =
    "POST /api/activities\nContent-Type: multipart/form-data; boundary=" + std::string(boundary) +
    "\nApiKey: key-1\n\n" + part("device_registered_id", "device-1") + part("curated_notification_id", "42") +
    part("location_id", "7") + part("type", "geofence") + part("activity", "geofence_entry") +
    part("time", "2025-03-14 09:26:53") + part("latitude", "51.5") + part("longitude", "-0.12") + "--" +
    std::string(boundary) + "--\r\n";

}  // namespace orlan::devbackend::good

namespace orlan::devbackend {

/// The text with every `from` in it replaced; the test fails when there is none.
inline std::string edited(std::string text, std::string_view from, std::string_view to) {
  auto at = text.find(from);
  EXPECT_NE(at, std::string::npos) << "nothing to replace: " << from;
  for (; at != std::string::npos; at = text.find(from, at + to.size())) text.replace(at, from.size(), to);
  return text;
}

inline Request requestOf(std::string_view text) {
  Request request;
  const auto headEnd = text.find("\n\n") + 1;
  const auto line = text.substr(0, text.find('\n'));
  request.method = line.substr(0, line.find(' '));
  request.target = line.substr(line.find(' ') + 1);
  request.body = text.substr(headEnd + 1);
  for (auto rest = text.substr(line.size() + 1, headEnd - line.size() - 1); !rest.empty();) {
    const auto header = rest.substr(0, rest.find('\n'));
    const auto colon = header.find(": ");
    request.headers.emplace_back(header.substr(0, colon), header.substr(colon + 2));
    rest.remove_prefix(header.size() + 1);
  }
  return request;
}

/// The request as bytes, with the length of its body.
inline std::string wire(std::string_view text) {
  const auto request = requestOf(text);
  auto bytes = request.method + " " + request.target + " HTTP/1.1\r\n";
  for (const auto& [name, value] : request.headers) bytes += name + ": " + value + "\r\n";
  if (!request.body.empty()) bytes += "Content-Length: " + std::to_string(request.body.size()) + "\r\n";
  return bytes + "\r\n" + request.body;
}

}  // namespace orlan::devbackend
