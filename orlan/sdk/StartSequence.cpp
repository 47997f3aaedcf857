#include "orlan/sdk/StartSequence.hpp"

#include <fmt/format.h>

#include <functional>
#include <utility>

#include "orlan/backend/StoreKeys.hpp"
#include "orlan/sdk/BundleCheck.hpp"
#include "orlan/sdk/Errors.hpp"
#include "orlan/sdk/HostCredentials.hpp"

namespace orlan {

StartSequence::StartSequence(OrlanPlugin& plugin, const Platform& phone, OrlanServices& services,
                             AppStateMonitoring& monitoring)
    : plugin_(plugin),
      phone_(phone),
      services_(services),
      monitoring_(monitoring),
      logger_(services.logger) {}

void StartSequence::withHostCredentials(Config::Environment env, const Segmentations& segmentations,
                                        const Delegate& delegate) {
  auto credentials = pendingTransmissionAuthOverride_;
  if (!credentials) credentials = fromPropertyList();
  if (!credentials) {
    const Error error = errors::noHostCredentials();
    fail(delegate, error.description, error);
    return;
  }
  withAppCredentials(std::move(*credentials), env, segmentations, delegate);
}

void StartSequence::withAppCredentials(TransmissionAppCredentials credentials, Config::Environment env,
                                       const Segmentations& segmentations, const Delegate& delegate) {
  const std::string key = credentials.companyApiKey;
  pendingTransmissionAuthOverride_ = std::move(credentials);
  withApiKey(key, env, segmentations, delegate);
}

void StartSequence::withApiKey(const std::string& apiKey, Config::Environment env,
                               const Segmentations& segmentations, const Delegate& delegate) {
  auto credentials = std::exchange(pendingTransmissionAuthOverride_, std::nullopt);
  if (!credentials) credentials = fromPropertyList();
  if (credentials && credentials->companyApiKey.empty()) credentials->companyApiKey = apiKey;
  const std::string key = credentials ? credentials->companyApiKey : apiKey;

  if (const auto check = checkBundle(credentials, phone_.bundle.identifier()); !check) {
    fail(delegate, check.error().description, check.error());
    return;
  }

  const Number start = ++latest_;
  bag_ = {};
  monitoring_.removeAppStateObservers();
  services_.api->resetCredentialsIfKeyChanged(key);
  delegate_ = delegate;
  adopt(key, env, credentials);
  services_.locationPermission->configure();
  if (!isCurrent(start)) return;
  services_.notificationPermission->refresh();
  registerDevice(start, segmentations);
  if (isCurrent(start)) watchPermissions();
}

/// To be asked after everything that may call the host.
bool StartSequence::isCurrent(Number start) const {
  return start == latest_ && phone_.main.isOpen();
}

std::optional<TransmissionAppCredentials> StartSequence::fromPropertyList() const {
  const auto content = phone_.bundle.propertyList("OrlanConfig");
  return content ? hostCredentials(*content, phone_.bundle.identifier()) : std::nullopt;
}

void StartSequence::adopt(const std::string& key, Config::Environment env,
                          const std::optional<TransmissionAppCredentials>& credentials) {
  storedApiKey_ = key;
  storedEnv_ = env;
  services_.api->setEnv(env);
  phone_.store.set(storeKeys::environment, rawValue(env));
  services_.api->setTransmissionAuthConfig(credentials);
}

void StartSequence::registerDevice(Number start, const Segmentations& segmentations) {
  const auto answer = services_.api->registerDevice(storedApiKey_, segmentations);
  auto listening = answer.subscribe([this, start](const Result<APIService::AuthPayload>& identity) {
    if (!isCurrent(start)) return;
    if (identity) {
      registered(start, *identity);
    } else {
      fail(delegate_, "Auth failed: " + identity.error().description, identity.error());
    }
  });
  if (isCurrent(start)) bag_.add(std::move(listening));
}

void StartSequence::watchPermissions() {
  // Statuses may arrive on any thread, so the handlers touch nothing but the logger.
  bag_.add(services_.locationPermission->statusPublisher().subscribe(
      [&logger = logger_](const LocationAuthorization& status) {
        logger.breadcrumb(fmt::format("Location status = {}", rawValue(status)));
      }));
  bag_.add(services_.notificationPermission->statusPublisher().subscribe(
      [&logger = logger_](const NotificationAuthorization& status) {
        logger.breadcrumb(fmt::format("Push status = {}", rawValue(status)));
      }));
}

void StartSequence::registered(Number start, const APIService::AuthPayload& identity) {
  logger_.log("Auth OK • deviceID=" + identity.deviceID);
  if (const auto delegate = delegate_.lock()) {
    delegate->didAuthenticate(plugin_, identity.deviceID, identity.orlanID);
  }
  std::shared_ptr<LocationManager> manager;
  bool inFront = false;
  const std::function<void()> steps[] = {
      [&] {
        manager = phone_.locations.makeManager("host");
        inFront = phone_.application.state() == ApplicationState::active;
        logger_.breadcrumb(inFront ? "📱 Initial app state check: FOREGROUND"
                                   : "📱 Initial app state check: BACKGROUND");
        // After an earlier start it may still run: nobody heard signals while this start was under way.
        ForegroundGeofenceMonitor* const foreground = services_.foregroundMonitor.ifBuilt();
        if (!inFront && foreground != nullptr && foreground->isRunning()) foreground->stop();
      },
      [&] {
        if (inFront) return services_.backgroundMonitor->pauseMonitoring();
        services_.backgroundMonitor->resumeMonitoring();
      },
      [&] {
        logger_.breadcrumb(inFront ? "📱 Pre-paused BG monitor (app in foreground)"
                                   : "📱 BG monitor active (app in background)");
        logger_.log("I'm here and this is the API key - " + storedApiKey_);
        services_.geofence->start(storedApiKey_, storedEnv_, manager);
      },
      [&] {
        logger_.breadcrumb(inFront ? "📱 Starting FG monitor (app in foreground)"
                                   : "📱 Skipping FG monitor start (app in background)");
        if (inFront) services_.foregroundMonitor->start(manager);
      },
      [&] {
        logger_.breadcrumb("🟢 Calling reportPluginStarted");
        logger_.breadcrumb("🟢 inside reportPluginStarted");
        services_.api->createPluginActivity("plugin_started", storedApiKey_, storedEnv_);
        monitoring_.setUpAppStateMonitoring();
        LocationTrackingReliability& reliability = *services_.reliability;
        reliability.loadPendingEvents();
        reliability.loadFailedEvents();
        reliability.processPendingEvents();
      },
  };
  for (const auto& step : steps) {
    if (!isCurrent(start)) return;
    step();
  }
}

void StartSequence::fail(const Delegate& delegate, const std::string& line, const Error& error) {
  logger_.error(line);
  if (const auto host = delegate.lock()) host->didFailWith(plugin_, error);
}

}  // namespace orlan
