#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/Activity.hpp"
#include "orlan/backend/Config.hpp"
#include "orlan/backend/TransmissionAppCredentials.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/base/Single.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/Platform.hpp"

namespace orlan {

class LocationTrackingReliability;

/// The process's backend client: who the device is, which environment, and every call to the platform API.
/// Calls may come from any thread unless their line says otherwise; answers are processed on the HTTP
/// client's queue and delivered on the main thread. No call retries; each ends exactly once. Destroying the
/// service cancels what is on its way.
class APIService {
 public:
  /// The identity that a registration yields.
  struct AuthPayload {
    std::string apiKey;
    std::string deviceID;
    std::string orlanID;

    friend bool operator==(const AuthPayload&, const AuthPayload&) = default;
  };

  APIService(const Platform& phone, const BaseUrls& urls, Logger& logger,
             Lazy<LocationTrackingReliability>& reliability);
  ~APIService();

  static APIService& shared();

  /// The environment of all calls; `staging` until start says otherwise.
  [[nodiscard]] Config::Environment env() const;
  void setEnv(Config::Environment environment);

  [[nodiscard]] std::optional<TransmissionAppCredentials> transmissionAuthConfig() const;
  void setTransmissionAuthConfig(std::optional<TransmissionAppCredentials> credentials);

  /// True once the device is registered, fresh or from the store.
  [[nodiscard]] bool isAuthenticated() const;

  /// Emits the identity at each successful registration, on the thread that learned of it.
  [[nodiscard]] Publisher<AuthPayload>& authPublisher();

  /// Registers the device, or answers from the store when it is registered already (then syncs the push
  /// token).
  Single<AuthPayload> registerDevice(const std::string& apiKey,
                                     const std::vector<std::string>& segmentations);

  /// Keeps the token and syncs it when the device is registered and the backend has not seen it.
  void updateAPNsToken(std::string_view token);  // raw bytes
  void updateFCMToken(std::string_view token);

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

/// Removes the stored identity when the device was registered with another key; warns when it did.
void resetCredentialsIfKeyChanged(KeyValueStore& store, Logger& logger, const std::string& newKey);

template <>
struct Fields<APIService::AuthPayload> {
  using R = APIService::AuthPayload;
  static constexpr std::tuple list{field("apiKey", &R::apiKey), field("deviceID", &R::deviceID),
                                   field("orlanID", &R::orlanID)};
};

}  // namespace orlan
