#pragma once

#include <cstdint>
#include <string_view>

namespace orlan {

/// What one fix says about one polygon.
struct GeofenceResult {
  std::int64_t campaignId = 0;
  std::int64_t locationId = 0;
  bool isInside = false;
  double confidence = 0.0;           // 1 for an exact fix down to 0.1; above 1 for a fix that is not valid
  std::string_view detectionMethod;  // static text
  double accuracy = 0.0;             // the fix's, metres

  friend bool operator==(const GeofenceResult&, const GeofenceResult&) = default;
};

}  // namespace orlan
