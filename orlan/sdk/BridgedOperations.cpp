// The facade for hosts behind a language bridge: each operation converts its arguments and ends in the one it
// is named after.
#include <utility>

#include "orlan/sdk/BridgedArguments.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"

namespace orlan {

void OrlanPlugin::startBridged(const std::string& apiKey, std::int64_t environment,
                               const json::Value& segmentations, const Delegate& delegate) {
  start(apiKey, environmentFromBridged(environment), stringsFromBridged(segmentations), delegate);
}

void OrlanPlugin::startBridged(std::int64_t environment, const json::Value& segmentations,
                               const Delegate& delegate) {
  start(environmentFromBridged(environment), stringsFromBridged(segmentations), delegate);
}

void OrlanPlugin::startBridged(const std::string& companyApiKey, const std::string& appId,
                               const std::string& appApiKey, const std::string& iosBundleId,
                               std::int64_t environment, const json::Value& segmentations,
                               const Delegate& delegate) {
  start(companyApiKey, appId, appApiKey, iosBundleId, environmentFromBridged(environment),
        stringsFromBridged(segmentations), true, delegate);
}

void OrlanPlugin::updateSegmentsBridged(const json::Value& segmentations, BridgedOutcome completion) {
  updateSegments(stringsFromBridged(segmentations), fromBridged(std::move(completion)));
}

void OrlanPlugin::fetchConfigurationBridged(bool forceRefresh,
                                            BridgedCompletion<OrlanConfiguration> completion) {
  fetchConfiguration(forceRefresh, fromBridged(std::move(completion)));
}

void OrlanPlugin::refreshPrivacyTextBridged(BridgedCompletion<std::string> completion) {
  refreshPrivacyText(fromBridged(std::move(completion)));
}

std::string OrlanPlugin::getPrivacyTextBridged() const {
  return getPrivacyText();
}

void OrlanPlugin::refetchGeofenceBridged() {
  refetchGeofence();
}

void OrlanPlugin::submitSurveyResponseObjC(const std::string& notificationId,
                                           const std::optional<std::string>& locationId,
                                           const json::Value& answers, BridgedOutcome completion) {
  submitSurveyResponse(notificationId, locationId, answersFromBridged(answers),
                       fromBridged(std::move(completion)));
}

void OrlanPlugin::trackSurveyEventObjC(const std::string& notificationId,
                                       const std::optional<std::string>& locationId,
                                       const std::string& activity, BridgedOutcome completion) {
  trackSurveyEvent(notificationId, locationId, activity, fromBridged(std::move(completion)));
}

}  // namespace orlan
