#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/Config.hpp"
#include "orlan/base/Error.hpp"
#include "orlan/base/json.hpp"
#include "orlan/geofence/NotificationCounter.hpp"
#include "orlan/platform/NotificationCenter.hpp"

namespace orlan {

class OrlanPlugin;
struct OrlanServices;
struct Platform;

/// Hears how a start ended. Main thread; both methods are optional.
class OrlanPluginDelegate {
 public:
  virtual ~OrlanPluginDelegate() = default;
  /// Once a successful start: the device's identifier and the backend's identifier for it.
  virtual void didAuthenticate(OrlanPlugin&, const std::string& /*deviceID*/,
                               const std::string& /*orlanID*/) {}
  /// Once a failed start.
  virtual void didFailWith(OrlanPlugin&, const Error&) {}
};

/// Receives the response to a tapped notification as it is. Main thread.
class OrlanNotificationDelegate {
 public:
  virtual ~OrlanNotificationDelegate() = default;
  virtual void orlanDidReceive(const NotificationResponse& response) = 0;
};

/// The one object through which a host drives the library. Main thread. Delegates are held weakly. Nothing is
/// thrown; all outcomes of a start reach the delegate.
class OrlanPlugin : public NotificationCounter {
 public:
  using Delegate = std::weak_ptr<OrlanPluginDelegate>;
  using Segmentations = std::vector<std::string>;

  OrlanPlugin(const Platform& phone, OrlanServices& services);
  ~OrlanPlugin() override;

  static OrlanPlugin& shared();

  /// Starts with an API key. Credentials in OrlanConfig.plist, if there are any, win over the argument.
  void start(const std::string& apiKey, Config::Environment env, const Segmentations& segmentations,
             const Delegate& delegate);

  /// Starts with the credentials in OrlanConfig.plist, which must be there.
  void start(Config::Environment env, const Segmentations& segmentations, const Delegate& delegate);

  /// Starts with app-scoped credentials, taken as they are.
  void start(const std::string& companyApiKey, const std::string& appId, const std::string& appApiKey,
             const std::string& iosBundleId, Config::Environment env, const Segmentations& segmentations,
             bool includeLegacyApiKeyHeader, const Delegate& delegate);

  /// The same three for hosts behind a language bridge: the environment as an integer (0 development, 1
  /// staging, 2 production, 3 nightly, any other staging); segmentations as any value, of which only an array
  /// wholly made of strings counts.
  void startBridged(const std::string& apiKey, std::int64_t environment, const json::Value& segmentations,
                    const Delegate& delegate);
  void startBridged(std::int64_t environment, const json::Value& segmentations, const Delegate& delegate);
  void startBridged(const std::string& companyApiKey, const std::string& appId, const std::string& appApiKey,
                    const std::string& iosBundleId, std::int64_t environment,
                    const json::Value& segmentations, const Delegate& delegate);

  /// Counts of campaign notifications since launch or the last reset, as a text for people.
  [[nodiscard]] std::string getNotificationStats() const;
  void resetNotificationStats();

  /// The same counts as a record, as assembled when a started library last changed between foreground and
  /// background with something to count; empty before. The backend has no endpoint that takes it: a host may
  /// send it where it likes.
  [[nodiscard]] const json::Object& notificationTelemetry() const;

  /// Called by the monitors for each entry and each allowed exit, with its activation.
  void recordFGNotification(std::string_view activation) override;
  void recordBGNotification(std::string_view activation) override;

  /// The company API key in force; empty before the first start.
  [[nodiscard]] const std::string& storedApiKey() const;
  [[nodiscard]] Config::Environment storedEnv() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orlan
