#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/Multipart.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/platform/Coordinate.hpp"

/// The calls behind `APIService`, each in a file of its own that reads from top to bottom like the exchange
/// itself. Any thread.
namespace orlan::calls {

/// What a call works with; stands until the request layer has ended.
struct Context {
  Platform phone;
  Logger& logger;
  ClientState& client;
  const DeviceIdentity& identity;
  RequestLayer& requests;
  Lazy<LocationTrackingReliability>& reliability;
};

/// Which token to send, if any: one that the backend has not seen, or, when forced, the one it has seen last
/// if there is no other ("pending" is none).
[[nodiscard]] std::optional<std::string> tokenToSync(std::string_view current,
                                                     const std::optional<std::string>& lastSynced,
                                                     bool force);

/// Sends the device record again when `tokenToSync` has a token for it; `force` when something else in the
/// record has changed. Outcomes are only logged.
void syncToken(const Context& with, const std::string& apiKey, bool force);

/// As the operations of `APIService` that are named like them.
Single<OrlanConfiguration> fetchConfiguration(const Context& with, bool forceRefresh);
[[nodiscard]] std::optional<OrlanConfiguration> cachedConfiguration(const Context& with);
Single<bool> updateSegments(const Context& with, const std::vector<std::string>& segmentations);
void setCorrelationId(const Context& with, std::string_view identifier);
void clearCorrelationId(const Context& with);
Single<bool> submitSurveyResponse(const Context& with, const SurveyResponseRequest& response);
Single<bool> trackSurveyEvent(const Context& with, const SurveyResponseRequest& event);
void createPluginActivity(const Context& with, std::string_view activity, const std::string& apiKey,
                          Config::Environment environment);

/// One thing that happened because of a campaign. Without a position it goes out as -1, -1; with one it is
/// also a pending event of the reliability store, and its outcome is logged.
struct ActivityReport {
  ActivityType activity;
  std::int64_t locationID;
  std::int64_t curatedNotificationID;
  NotificationType type;
  std::optional<Coordinate> position = {};
};
void report(const Context& with, const ActivityReport& report);

}  // namespace orlan::calls
