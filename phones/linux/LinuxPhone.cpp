#include "phones/linux/LinuxPhone.hpp"

#include <utility>

#include "phones/common/ThreadQueue.hpp"
#include "phones/linux/DiskFiles.hpp"
#include "phones/linux/SqliteStore.hpp"
#include "phones/linux/directories.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

std::unique_ptr<TimeSource> timeSource(const PhoneConfig& config) {
  if (config.timeScale == 1.0 && !config.wallClock) return std::make_unique<RealTime>();
  return std::make_unique<ReplayTime>(config.timeScale, config.wallClock.value_or(RealTime().wallNow()));
}

/// Made before anything that keeps files in them.
Directories madeDirectories(const PhoneConfig& config) {
  auto made = directories(config.home, config.application);
  if (!disk::makeDirectory(made.cache) && config.trouble) {
    config.trouble(made.cache + ": the directory cannot be written to");
  }
  disk::makeDirectory(made.data);  // the store says what is wrong with it
  return made;
}

}  // namespace

// In the order of making: what stands above outlives what stands below.
struct LinuxPhone::Parts {
  explicit Parts(PhoneConfig config)
      : directories(madeDirectories(config)),
        time(timeSource(config)),
        main(*time),
        clock(*time),
        store(directories.data + "/store.sqlite", observers, config.trouble),
        files(directories.cache, observers),
        device(directories.data + "/device-id", random),
        bundle(std::move(config.bundle)),
        console(std::move(config.console), observers),
        systemLog(std::move(config.systemLog), observers),
        application(main, observers, config.state),
        locations(main, observers, config.location),
        notifications(main, application, observers, std::move(config.notifications)),
        player(main, *time, locations),
        http(std::make_unique<CurlHttpClient>(observers, std::move(config.http))) {}

  phone::PhoneObservers observers;
  const Directories directories;
  const std::unique_ptr<TimeSource> time;
  EventLoop main;
  SystemClock clock;
  phone::ThreadQueues queues;
  SystemRandom random;
  SqliteStore store;
  DiskFiles files;
  HostDevice device;
  HostBundle bundle;
  HostConsole console;
  HostSystemLog systemLog;
  phone::ApplicationModel application;
  phone::LocationHub locations;
  phone::LocalNotificationCenter notifications;
  TrackPlayer player;
  std::unique_ptr<CurlHttpClient> http;
};

LinuxPhone::LinuxPhone(PhoneConfig config) : parts_(std::make_unique<Parts>(std::move(config))) {}

LinuxPhone::~LinuxPhone() {
  parts_->player.stop();
  parts_->http.reset();
  parts_->main.runPosted();  // while all that the tasks may use is still there
}

Platform LinuxPhone::platform() {
  Parts& p = *parts_;
  return {p.main,      p.queues,        p.clock,       p.random, p.store,  p.files,   *p.http,
          p.locations, p.notifications, p.application, p.device, p.bundle, p.console, p.systemLog};
}

void LinuxPhone::observe(phone::PhoneObserver& observer) {
  parts_->observers.add(observer);
}

EventLoop& LinuxPhone::main() {
  return parts_->main;
}
Clock& LinuxPhone::clock() {
  return parts_->clock;
}
phone::LocationHub& LinuxPhone::locations() {
  return parts_->locations;
}
phone::LocalNotificationCenter& LinuxPhone::notifications() {
  return parts_->notifications;
}
phone::ApplicationModel& LinuxPhone::application() {
  return parts_->application;
}
TrackPlayer& LinuxPhone::player() {
  return parts_->player;
}

void LinuxPhone::setTimeScale(double scale) {
  parts_->main.assertCurrent();
  if (auto* replay = dynamic_cast<ReplayTime*>(parts_->time.get())) replay->setScale(scale);
}

void LinuxPhone::run() {
  parts_->main.run();
}

void LinuxPhone::stop() {
  parts_->main.stop();
}

}  // namespace orlan::linuxphone
