#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/Config.hpp"
#include "orlan/backend/OrlanConfiguration.hpp"
#include "orlan/base/Error.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/base/json.hpp"
#include "orlan/geofence/NotificationCounter.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/Polygon.hpp"
#include "orlan/sdk/Completions.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan {

class OrlanPlugin;
struct OrlanServices;
struct Platform;

/// Hears how a start ended, on the main thread: inside the call when the outcome is known by then, else
/// later. Both methods are optional and may start again, end the library or let go of this delegate, which is
/// held weakly. A start that another one has replaced tells nobody.
class OrlanPluginDelegate {
 public:
  virtual ~OrlanPluginDelegate() = default;
  /// Once a successful start, before any service comes up: the device's identifier and the backend's
  /// identifier for it.
  virtual void didAuthenticate(OrlanPlugin&, const std::string& /*deviceID*/,
                               const std::string& /*orlanID*/) {}
  /// Once a failed start. The domain is "OrlanPlugin" when the credentials are at fault, else the backend
  /// client's.
  virtual void didFailWith(OrlanPlugin&, const Error&) {}
};

/// The one object through which a host drives the library. Main thread. Delegates are held weakly. Nothing is
/// thrown; all outcomes of a start reach the delegate.
///
/// Completions are called once, on the main thread: inside the call when the outcome is known by then (a
/// refusal, a kept configuration), else later. They may be empty, may call back into the library or end it,
/// and are dropped uncalled when the library ends first. Any number of calls may be pending; each answers its
/// own completion. Errors have the domain "OrlanPlugin" when the facade itself refuses, else they are the
/// backend client's, passed on as they are.
///
/// Operations named …Bridged or …ObjC are for hosts behind a language bridge, which pass untyped values: an
/// environment as an integer (0 development, 1 staging, 2 production, 3 nightly, any other staging), a list
/// of texts as any value, of which only an array wholly made of strings counts. All else is as in the
/// operation of the same name; operations without such a twin take and give what every bridge can pass.
class OrlanPlugin : public NotificationCounter {
 public:
  using Delegate = std::weak_ptr<OrlanPluginDelegate>;
  using Segmentations = std::vector<std::string>;

  OrlanPlugin(const Platform& phone, OrlanServices& services);
  ~OrlanPlugin() override;

  /// The current `Runtime`'s facade, made at its first use.
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

  /// The same three for hosts behind a language bridge; the last always includes the legacy header.
  void startBridged(const std::string& apiKey, std::int64_t environment, const json::Value& segmentations,
                    const Delegate& delegate);
  void startBridged(std::int64_t environment, const json::Value& segmentations, const Delegate& delegate);
  void startBridged(const std::string& companyApiKey, const std::string& appId, const std::string& appApiKey,
                    const std::string& iosBundleId, std::int64_t environment,
                    const json::Value& segmentations, const Delegate& delegate);

  // The backend, on the host's behalf. Before a start the three with a completion fail with code -1 and send
  // nothing.

  /// Replaces the device's segmentation tags; true once the backend has agreed. Campaigns are not fetched
  /// anew: see `refetchGeofence`.
  void updateSegments(const Segmentations& segmentations, Completion<bool> completion = {});
  void updateSegmentsBridged(const json::Value& segmentations, BridgedOutcome completion);

  /// The last good configuration, which a fetch in an earlier process may have left; with `forceRefresh`, or
  /// when there is none, the backend's answer, which is kept. A failed fetch keeps what there was.
  void fetchConfiguration(bool forceRefresh, Completion<OrlanConfiguration> completion = {});
  void fetchConfigurationBridged(bool forceRefresh, BridgedCompletion<OrlanConfiguration> completion);

  /// The last good configuration, if there is one. Asks nobody; needs no start.
  [[nodiscard]] std::optional<OrlanConfiguration> getCurrentConfiguration() const;

  /// Fetches the configuration and gives its privacy text.
  void refreshPrivacyText(Completion<std::string> completion = {});
  void refreshPrivacyTextBridged(BridgedCompletion<std::string> completion);

  /// The privacy text of the last good configuration, else empty. Asks nobody; needs no start.
  [[nodiscard]] std::string getPrivacyText() const;
  [[nodiscard]] std::string getPrivacyTextBridged() const;

  // Surveys. Refused before anything is sent, in this order: -1 not started, -2 the device is not registered,
  // -3 `notificationId` is no whole decimal number; answers also -4 when there are none, -5 when some are
  // invalid (`isValid`). A `locationId` that is absent or no whole number is left out of what is sent. A
  // status outside 200 to 299 is an error of the domain "OrlanSDK" with the status as its code.

  /// Sends a person's answers to the questions of a notification, made with `SurveyQuestion::toAnswer`; true
  /// once the backend has them. Nothing is repeated or kept for later.
  void submitSurveyResponse(const std::string& notificationId, const std::optional<std::string>& locationId,
                            const std::vector<SurveyAnswer>& answers, Completion<bool> completion = {});
  /// `answers`: an array; elements that do not have an answer's JSON form are dropped.
  void submitSurveyResponseObjC(const std::string& notificationId,
                                const std::optional<std::string>& locationId, const json::Value& answers,
                                BridgedOutcome completion);

  /// Tells the backend what happened to a survey besides answers, such as that it was shown. `activity` is
  /// passed on as it is.
  void trackSurveyEvent(const std::string& notificationId, const std::optional<std::string>& locationId,
                        const std::string& activity, Completion<bool> completion = {});
  void trackSurveyEventObjC(const std::string& notificationId, const std::optional<std::string>& locationId,
                            const std::string& activity, BridgedOutcome completion);

  /// The host's own name for this device's user, kept across launches without the white space around it; a
  /// blank one clears it; empty when there is none. Needs no start; a registered device tells the backend.
  void setCorrelationId(std::string_view correlationId);
  [[nodiscard]] std::string getCorrelationId() const;
  void clearCorrelationId();

  /// Hands the phone's push token on: raw bytes, and the text of the other push service, which wins. May come
  /// before a start: the registration then takes it along. Brings no facade to life.
  static void updateAPNsToken(std::string_view token);
  static void updateFCMToken(std::string_view token);

  /// Asks the backend for the campaigns around the phone now. Before a start it only logs an error.
  void refetchGeofence();
  void refetchGeofenceBridged();

  /// The polygons of the campaigns around the phone: at subscription those of now, then each change.
  [[nodiscard]] static Publisher<std::vector<Polygon>>& polygonsPublisher();

  /// Ask the person for the location, while the application is in use or always. What comes of it is on
  /// `locationAuthorizationPublisher`.
  void requestLocationWhenInUse();
  void requestLocationAlways();

  /// What is known of the location authorization; `notDetermined` until the first start.
  [[nodiscard]] LocationAuthorization locationAuthorizationStatus() const;
  [[nodiscard]] std::int64_t locationAuthorizationStatusRaw() const;

  /// The same at subscription, then each report of the phone, on the main thread.
  [[nodiscard]] static Publisher<LocationAuthorization>& locationAuthorizationPublisher();

  /// Asks the person for notifications; a yes registers the application for remote ones. What comes of it is
  /// on `pushAuthorizationPublisher`.
  void requestPushPermission();

  /// What is known of the notification authorization; `notDetermined` until the phone has answered a start
  /// or a request.
  [[nodiscard]] NotificationAuthorization pushAuthorizationStatus() const;
  [[nodiscard]] std::int64_t pushAuthorizationStatusRaw() const;

  /// The same at subscription, then each answer of the phone, on whichever thread it comes.
  [[nodiscard]] static Publisher<NotificationAuthorization>& pushAuthorizationPublisher();

  /// Absolute path of the log file, whether or not it is there now.
  [[nodiscard]] std::string logFileURL() const;

  /// Deletes the log file with what was written before this call. It stays away until the next start of the
  /// process.
  void clearLogs();

  /// `text` in upper case, by the Unicode rules of no particular language.
  [[nodiscard]] std::string transform(std::string_view text) const;

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
