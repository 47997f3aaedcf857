#include "orlan/sdk/Runtime.hpp"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "orlan/geofence/CampaignCache.hpp"
#include "orlan/sdk/Errors.hpp"
#include "orlan/sdk/Ports.hpp"
#include "orlan/sdk/ScopedMainLoop.hpp"

namespace orlan {
namespace {

std::atomic<Runtime*> processRuntime = nullptr;
thread_local Runtime* scopedRuntime = nullptr;

}  // namespace

/// Members stand in the order in which they may use one another: the last goes first.
struct Runtime::Parts {
  Parts(const Platform& platform, Options given)
      : main(platform.main),
        phone{main,
              platform.queues,
              platform.clock,
              platform.random,
              platform.store,
              platform.files,
              platform.http,
              platform.locations,
              platform.notifications,
              platform.application,
              platform.device,
              platform.bundle,
              platform.console,
              platform.systemLog},
        options(std::move(given)) {
    cache.preload();
  }

  ScopedMainLoop main;
  Platform phone;  // the host's phone, but for its main loop
  Options options;
  Logger logger{phone.clock, phone.console, phone.files, phone.queues};

  CampaignCache cache{phone.files, phone.queues};

  // What the services know of each other beyond the floors below them.
  CounterPort counter{plugin};
  MonitorSink<ForegroundGeofenceMonitor> foregroundSink{foregroundMonitor};
  MonitorSink<BackgroundRegionMonitor> backgroundSink{backgroundMonitor};
  LocationStream locationStream{locationPermission};
  CampaignLookup campaigns{geofence};

  Lazy<LocationTrackingReliability> reliability{[this] {
    return std::make_shared<LocationTrackingReliability>(phone.main, phone.queues, phone.clock, phone.random,
                                                         phone.store, logger);
  }};
  Lazy<APIService> api{
      [this] { return std::make_shared<APIService>(phone, options.urls, logger, reliability); }};
  ReactionServices reactions{phone.clock, phone.store, phone.notifications, phone.random, logger,
                             api,         counter};
  Lazy<ForegroundGeofenceMonitor> foregroundMonitor{[this] {
    return std::make_shared<ForegroundGeofenceMonitor>(phone.main, phone.locations, reactions, reliability);
  }};
  Lazy<BackgroundRegionMonitor> backgroundMonitor{
      [this] { return std::make_shared<BackgroundRegionMonitor>(phone.main, phone.locations, reactions); }};
  Lazy<LocationPermissionManager> locationPermission{[this] {
    return std::make_shared<LocationPermissionManager>(phone.main, phone.locations, phone.application,
                                                       phone.systemLog);
  }};
  Lazy<NotificationManager> notificationManager{
      [this] { return std::make_shared<NotificationManager>(phone, logger, api, campaigns); }};
  Lazy<NotificationBridge> notificationBridge{
      [this] { return std::make_shared<NotificationBridge>(phone.main); }};
  Lazy<NotificationPermissionManager> notificationPermission{
      [this] { return std::make_shared<NotificationPermissionManager>(phone, logger, notificationManager); }};
  Lazy<GeofenceService> geofence{[this] {
    return std::make_shared<GeofenceService>(
        phone,
        GeofenceService::Neighbours{logger, api, cache, locationStream, foregroundSink, backgroundSink});
  }};
  Lazy<OrlanPlugin> plugin{[this] { return std::make_shared<OrlanPlugin>(phone, services); }};

  OrlanServices services{logger,
                         phone.random,
                         reliability,
                         api,
                         foregroundMonitor,
                         backgroundMonitor,
                         geofence,
                         locationPermission,
                         notificationPermission,
                         notificationManager,
                         notificationBridge,
                         plugin};
};

Runtime::Runtime(const Platform& phone, Options options)
    : parts_(std::make_shared<Parts>(phone, std::move(options))) {
  parts_->main.setOwner(parts_);
}

Runtime::~Runtime() {
  parts_->main.close();  // the parts go now, or with the last turn that is under way
}

OrlanServices& Runtime::services() {
  return parts_->services;
}

Result<void> Runtime::install(const Platform& phone, Options options) {
  if (processRuntime.load() != nullptr) return Unexpected(errors::alreadyInstalled());
  processRuntime.store(new Runtime(phone, std::move(options)));
  return {};
}

void Runtime::uninstall() {
  delete processRuntime.exchange(nullptr);
}

Runtime& Runtime::current() {
  if (scopedRuntime != nullptr) return *scopedRuntime;
  if (Runtime* process = processRuntime.load()) return *process;
  std::fputs(
      "Orlan: no phone is installed. Call orlan::Runtime::install before the first use of the library.\n",
      stderr);
  std::abort();
}

Runtime::Scope::Scope(Runtime& runtime) : previous_(std::exchange(scopedRuntime, &runtime)) {}

Runtime::Scope::~Scope() {
  scopedRuntime = previous_;
}

}  // namespace orlan
