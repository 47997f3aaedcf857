#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/TransmissionAppCredentials.hpp"
#include "orlan/platform/Coordinate.hpp"
#include "orlan/platform/HttpClient.hpp"

namespace orlan {

/// The question which campaigns apply around a place, ready to send, and the log line that says so.
struct GeofenceRequest {
  struct Question {
    std::string baseUrl;  // of the transmission layer; the path is appended as it is
    Coordinate position;  // degrees
    std::vector<std::string> segments;
    TransmissionAppCredentials credentials;
    std::string_view reason;  // why it is asked, for the log
  };

  HttpRequest http;
  std::string logLine;

  [[nodiscard]] static GeofenceRequest of(const Question& question);
};

}  // namespace orlan
