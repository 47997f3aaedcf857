#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "orlan/platform/Platform.hpp"
#include "phones/common/ApplicationModel.hpp"
#include "phones/common/LocalNotificationCenter.hpp"
#include "phones/common/LocationHub.hpp"
#include "phones/common/PhoneObservers.hpp"
#include "phones/linux/CurlHttpClient.hpp"
#include "phones/linux/EventLoop.hpp"
#include "phones/linux/HostDevice.hpp"
#include "phones/linux/SystemParts.hpp"
#include "phones/linux/TimeSource.hpp"
#include "phones/linux/TrackPlayer.hpp"

namespace orlan::linuxphone {

/// A phone as its host wants it. Every member has the value of an ordinary one.
struct PhoneConfig {
  std::string home;                   // all files are below it; empty: the user's XDG directories
  std::string application = "orlan";  // the name of its folder there
  BundleSettings bundle;
  ApplicationState state = ApplicationState::active;
  phone::LocationSettings location;
  phone::NotificationSettings notifications;
  HttpOptions http;

  double timeScale = 1.0;              // times as fast as real time, see `ReplayTime`
  std::optional<TimePoint> wallClock;  // what the clock shows at the start; else the machine's time

  ConsoleSink console = printToStandardOutput;      // empty: silent
  SystemLogSink systemLog = writeToSyslog;          // empty: silent
  std::function<void(const std::string&)> trouble;  // one line: what of the phone does not work as it should
};

/// A real phone made of this machine: libcurl, SQLite, files on disk, an event loop on the thread that makes
/// it, and positions from a track. Its parts are what a host plays with; the application gets `platform()`,
/// and what is built on that ends before the phone.
///
/// At its end requests on their way are cancelled and what is posted to the main loop is run, in this order.
class LinuxPhone {
 public:
  explicit LinuxPhone(PhoneConfig config);
  ~LinuxPhone();
  LinuxPhone(const LinuxPhone&) = delete;
  LinuxPhone& operator=(const LinuxPhone&) = delete;

  [[nodiscard]] Platform platform();

  /// From now on `observer` sees what the outside world could see; it outlives the phone. Before the platform
  /// is used.
  void observe(phone::PhoneObserver& observer);

  [[nodiscard]] EventLoop& main();
  [[nodiscard]] Clock& clock();
  [[nodiscard]] phone::LocationHub& locations();
  [[nodiscard]] phone::LocalNotificationCenter& notifications();
  [[nodiscard]] phone::ApplicationModel& application();
  [[nodiscard]] TrackPlayer& player();

  /// From now on time runs at another pace; for a phone whose configuration names a pace or a wall clock, any
  /// other keeps real time. Main thread.
  void setTimeScale(double scale);

  /// Runs the main loop until `stop`.
  void run();

  /// Any thread, also a signal handler.
  void stop();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orlan::linuxphone
