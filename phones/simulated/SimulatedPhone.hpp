#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "orlan/platform/Platform.hpp"
#include "phones/common/ApplicationModel.hpp"
#include "phones/common/LocalNotificationCenter.hpp"
#include "phones/common/LocationHub.hpp"
#include "phones/common/PhoneObservers.hpp"
#include "phones/simulated/SimulatedClock.hpp"
#include "phones/simulated/SimulatedDevice.hpp"
#include "phones/simulated/SimulatedFiles.hpp"
#include "phones/simulated/SimulatedHttp.hpp"
#include "phones/simulated/SimulatedQueue.hpp"
#include "phones/simulated/SimulatedRandom.hpp"
#include "phones/simulated/SimulatedStore.hpp"
#include "phones/simulated/World.hpp"

namespace orlan::sim {

/// A phone as it comes out of the box. Every member has the value of an ordinary phone.
struct PhoneSettings {
  DeviceSettings device;
  UtcOffset offsetFromUtc;  // of the time zone; none: UTC
  ApplicationState application = ApplicationState::active;
  phone::LocationSettings location;
  phone::NotificationSettings notifications;
  json::Object store;                        // the key-value store
  std::map<std::string, std::string> files;  // the caches directory, by name
  bool keepsAppended = true;  // false: for a long play that never reads the log, which then takes no memory
};

/// Keeps what the application scheduled, so that a person can find it again by its number.
class ScheduledNotifications final : public phone::PhoneObserver {
 public:
  [[nodiscard]] const std::vector<NotificationRequest>& all() const { return all_; }
  void notificationScheduled(const NotificationRequest& request) override { all_.push_back(request); }

 private:
  std::vector<NotificationRequest> all_;
};

/// A phone in memory and in a world's virtual time. Its parts are what a test or a simulator plays with; the
/// application gets `platform()`. Used on the world's thread. Ends before its world and after everything that
/// holds its platform.
///
/// Confinement is checked in every build: what belongs to a queue and is called elsewhere ends the process.
class SimulatedPhone {
 public:
  explicit SimulatedPhone(World& world, PhoneSettings settings = {});
  ~SimulatedPhone();
  SimulatedPhone(const SimulatedPhone&) = delete;
  SimulatedPhone& operator=(const SimulatedPhone&) = delete;

  [[nodiscard]] Platform platform();

  /// From now on `observer` sees what the outside world could see; it outlives the phone's use.
  void observe(phone::PhoneObserver& observer) { observers_.add(observer); }

  [[nodiscard]] SimulatedHttp& http() { return http_; }
  [[nodiscard]] SimulatedStore& store() { return store_; }
  [[nodiscard]] SimulatedFiles& files() { return files_; }
  [[nodiscard]] SimulatedClock& clock() { return clock_; }
  [[nodiscard]] phone::LocationHub& locations() { return locations_; }
  [[nodiscard]] phone::LocalNotificationCenter& notifications() { return notifications_; }
  [[nodiscard]] phone::ApplicationModel& application() { return application_; }

  /// Every notification that the application scheduled so far, also before a relaunch.
  [[nodiscard]] const std::vector<NotificationRequest>& scheduled() const { return scheduled_.all(); }

  /// A fix taken now.
  [[nodiscard]] Location fixAt(Coordinate coordinate, double accuracy = 5.0) const;

  /// The phone moves there: one fix.
  void moveTo(Coordinate coordinate, double accuracy = 5.0);

  /// The process is killed and started again, the application in `state`. Call it when what was built on the
  /// platform has been destroyed. The phone keeps its store, files, position, authorizations, monitored
  /// regions and scheduled notifications; what the process left behind (posted tasks, timers, requests on
  /// their way, delegates, handlers) is gone.
  void relaunch(ApplicationState state = ApplicationState::active);

 private:
  phone::PhoneObservers observers_;
  ScheduledNotifications scheduled_;
  std::shared_ptr<const QueueContext> mainContext_;
  SimulatedLoop system_;  // the phone's own turns on the main thread, which survive the process
  SimulatedLoop main_;
  SimulatedQueues queues_;
  SimulatedClock clock_;
  SimulatedRandom random_;
  SimulatedStore store_;
  SimulatedFiles files_;
  SimulatedHttp http_;
  SimulatedDevice device_;
  SimulatedOutput output_;
  phone::ApplicationModel application_;
  phone::LocationHub locations_;
  phone::LocalNotificationCenter notifications_;
};

}  // namespace orlan::sim
