#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "orlan/backend/Activity.hpp"
#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/Multipart.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/Clock.hpp"
#include "orlan/platform/Coordinate.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan {

class LocationTrackingReliability;

/// One thing that happened because of a campaign.
struct ActivityReport {
  ActivityType activity;
  std::int64_t locationID;
  std::int64_t curatedNotificationID;
  NotificationType type;
};

/// The same as the backend wants it: eight text fields in their order.
using ActivityForm = std::array<FormField, 8>;
[[nodiscard]] ActivityForm activityForm(const ActivityReport& report, std::string deviceRegisteredID,
                                        std::string localTime, Coordinate position);

/// Uploads activity reports; each is on its own, nothing is queued or repeated. Any thread.
class ActivityReporter {
 public:
  ActivityReporter(const ClientState& client, const DeviceIdentity& identity, Clock& clock,
                   RandomSource& random, RequestLayer& requests, Logger& logger,
                   Lazy<LocationTrackingReliability>& reliability);

  /// A report without position, which goes out as -1, -1.
  void report(const ActivityReport& report);

  /// A report with position: also a pending event of the reliability store, and its outcome is logged.
  void reportGeo(const ActivityReport& report, Coordinate position);

 private:
  [[nodiscard]] ActivityForm form(const ActivityReport& report, Coordinate position) const;
  void send(const ActivityForm& form, bool logsOutcome);
  void finish(const Result<HttpReply>& reply, bool logsOutcome);
  void failed(const Error& error, bool logsOutcome);

  const ClientState& client_;
  const DeviceIdentity& identity_;
  Clock& clock_;
  RandomSource& random_;
  RequestLayer& requests_;
  Logger& logger_;
  Lazy<LocationTrackingReliability>& reliability_;
};

}  // namespace orlan
