#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/Activity.hpp"
#include "orlan/backend/Config.hpp"
#include "orlan/backend/OrlanConfiguration.hpp"
#include "orlan/backend/TransmissionAppCredentials.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/base/Single.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/Platform.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan {

class LocationTrackingReliability;

/// The process's backend client: who the device is, which environment, and every call to the platform API.
/// Calls may come from any thread unless their line says otherwise; answers are processed on the HTTP
/// client's queue and delivered on the main thread. No call retries; each ends exactly once. Destroying the
/// service cancels what is on its way.
class APIService {
 public:
  /// The identity that a registration yields, plain values.
  struct AuthPayload {
    std::string apiKey;    // the key that the device was registered with
    std::string deviceID;  // names the device in activities and surveys
    std::string orlanID;   // the backend's own identifier of the device

    friend bool operator==(const AuthPayload&, const AuthPayload&) = default;
  };

  APIService(const Platform& phone, const BaseUrls& urls, Logger& logger,
             Lazy<LocationTrackingReliability>& reliability);
  ~APIService();

  /// The current `Runtime`'s client, made at its first use. Any thread.
  static APIService& shared();

  /// The environment of all calls; `staging` until start says otherwise.
  [[nodiscard]] Config::Environment env() const;
  void setEnv(Config::Environment environment);

  [[nodiscard]] std::optional<TransmissionAppCredentials> transmissionAuthConfig() const;
  void setTransmissionAuthConfig(std::optional<TransmissionAppCredentials> credentials);

  /// True once the device is registered, fresh or from the store.
  [[nodiscard]] bool isAuthenticated() const;

  /// Opens a start with `newKey`: removes the stored identity when the device was registered with another
  /// key, and warns when it did. A registration that is under way no longer counts: it stores nothing and
  /// ends as cancelled.
  void resetCredentialsIfKeyChanged(const std::string& newKey);

  /// Emits the identity at each successful registration, on the thread that learned of it. Only the service
  /// sends into it.
  [[nodiscard]] Publisher<AuthPayload>& authPublisher();

  /// Registers the device, or answers from the store when it is registered already (then syncs the push
  /// token). Of several that are under way only the last one counts; the others end as cancelled.
  Single<AuthPayload> registerDevice(const std::string& apiKey,
                                     const std::vector<std::string>& segmentations);

  /// Keeps the token and syncs it when the device is registered and the backend has not seen it.
  void updateAPNsToken(std::string_view token);  // raw bytes
  void updateFCMToken(std::string_view token);

  /// The last good configuration, or, when there is none or `forceRefresh` is true, the transmission layer's
  /// answer, which is kept. What is kept, and an environment without a usable address, answer at once.
  Single<OrlanConfiguration> fetchConfiguration(bool forceRefresh);

  /// The last good configuration, in this process or an earlier one.
  [[nodiscard]] std::optional<OrlanConfiguration> cachedConfiguration() const;

  /// Replaces the device's segmentation tags; true once the backend has agreed, and only then are they
  /// stored. An environment without a usable address, and a tag that is not UTF-8, fail at once.
  Single<bool> updateSegments(const std::vector<std::string>& segmentations);

  /// The host's own name for this device's user, without white space around it; a blank one clears it. Each
  /// change of a registered device sends its record again.
  void setCorrelationId(std::string_view identifier);
  void clearCorrelationId();
  [[nodiscard]] std::optional<std::string> correlationId() const;

  /// Brings answers, or an event without answers, to the backend; true once it has taken them. A text that is
  /// not UTF-8 fails at once.
  Single<bool> submitSurveyResponse(const SurveyResponseRequest& response);
  Single<bool> trackSurveyEvent(const SurveyResponseRequest& event);

  /// Reports what happened, without and with the position at which it did. The second also records a pending
  /// event. Outcomes are only logged.
  void reportActivity(ActivityType activity, std::int64_t locationID, std::int64_t curatedNotificationID,
                      NotificationType type);
  void reportGeoActivity(ActivityType activity, std::int64_t locationID, std::int64_t curatedNotificationID,
                         NotificationType type, double latitude, double longitude);

  /// Tells the platform that the library did something, such as "plugin_started".
  void createPluginActivity(std::string_view activity, const std::string& apiKey,
                            Config::Environment environment);

  /// What the transmission layer is asked with: the configured credentials with `fallbackKey` for an empty
  /// company key, or a legacy set made of it.
  [[nodiscard]] TransmissionAppCredentials effectiveTransmissionCredentials(
      const std::string& fallbackKey) const;

  /// The stored segmentation tags, empty pieces dropped.
  [[nodiscard]] std::vector<std::string> segments() const;

  /// Base URL of the transmission layer for an environment.
  [[nodiscard]] const std::string& transmissionUrl(Config::Environment environment) const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

template <>
struct Fields<APIService::AuthPayload> {
  using R = APIService::AuthPayload;
  static constexpr std::tuple list{field("apiKey", &R::apiKey), field("deviceID", &R::deviceID),
                                   field("orlanID", &R::orlanID)};
};

}  // namespace orlan
