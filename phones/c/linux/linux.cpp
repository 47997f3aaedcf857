#include "phones/c/linux.h"

#include <map>
#include <mutex>
#include <utility>

#include "orlan/c/Notifications.hpp"
#include "orlan/c/Phone.hpp"
#include "orlan/c/Values.hpp"
#include "phones/linux/LinuxPhone.hpp"

namespace {

using namespace orlan::c;
using orlan::Duration;
using orlan::NotificationRequest;
using orlan::linuxphone::PhoneConfig;

/// Hands what comes up to the host.
class Shower final : public orlan::phone::PhoneObserver {
 public:
  explicit Shower(const orlan_linux_options& options) : show_(options.show), context_(options.context) {}
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override {
    if (options != 0) show(request);
  }
  void notificationDelivered(const NotificationRequest& request) override { show(request); }

 private:
  void show(const NotificationRequest& request) {
    const LentNotification out(request);
    call(show_, context_, out.get());
  }

  void (*show_)(void*, const orlan_notification*);
  void* context_;
};

PhoneConfig configFrom(const orlan_linux_options& options) {
  PhoneConfig config;
  config.home = text(options.home, "home");
  if (auto name = optionalText(options.application, "application")) config.application = std::move(*name);
  config.bundle.identifier = optionalText(options.bundle, "bundle");
  config.bundle.directory = text(options.property_lists, "property_lists");
  if (options.time_scale > 0) config.timeScale = options.time_scale;
  if (options.silent) {
    config.console = nullptr;
    config.systemLog = nullptr;
  }
  return config;
}

class Phone final : public PhoneModel {
 public:
  explicit Phone(const orlan_linux_options& options) : shower_(options), phone_(configFrom(options)) {
    phone_.observe(shower_);
  }
  [[nodiscard]] orlan::Platform platform() override { return phone_.platform(); }
  [[nodiscard]] orlan::linuxphone::LinuxPhone& phone() { return phone_; }

  /// The host's tasks run as if the loop had called them: not inside anything.
  void post(Duration delay, orlan_linux_task task, void* context) {
    const std::lock_guard lock(mutex_);
    const auto id = ++last_;
    posted_[id] = phone_.main().after(delay, [this, id, task, context] {
      const auto ending = take(id);
      task(context);
    });
  }

 private:
  orlan::Subscription take(std::uint64_t id) {
    const std::lock_guard lock(mutex_);
    auto node = posted_.extract(id);
    return node.empty() ? orlan::Subscription() : std::move(node.mapped());
  }

  Shower shower_;
  orlan::linuxphone::LinuxPhone phone_;
  std::mutex mutex_;
  std::map<std::uint64_t, orlan::Subscription> posted_;
  std::uint64_t last_ = 0;
};

}  // namespace

orlan_status orlan_linux_phone_new(const orlan_linux_options* options, orlan_phone** phone) {
  return guarded(__func__, [&] {
    needed(phone, "phone");
    *phone = handleOf(std::make_shared<Phone>(tableFrom(options, "options")));
  });
}

orlan_status orlan_linux_run(orlan_phone* phone) {
  const bool nested = Inside::any();
  std::shared_ptr<Phone> running;
  const orlan_status status = guarded(__func__, [&] {
    running = phoneOf<Phone>(phone);
    assertMain(*running);
    if (nested) throw Misuse{ORLAN_BUSY, "inside a callback"};
  });
  if (status != ORLAN_OK) return status;
  running->inItsLoop = true;
  running->phone().run();  // not guarded: what the host posts may uninstall
  running->inItsLoop = false;
  return ORLAN_OK;
}

orlan_status orlan_linux_stop(orlan_phone* phone) {
  return guarded(__func__, [&] { phoneOf<Phone>(phone)->phone().stop(); });
}

orlan_status orlan_linux_post(orlan_phone* phone, int64_t delay, orlan_linux_task task, void* context) {
  return guarded(__func__, [&] {
    if (task == nullptr) throw Misuse{ORLAN_INVALID_ARGUMENT, "task is NULL"};
    phoneOf<Phone>(phone)->post(Duration(delay), task, context);
  });
}

orlan_status orlan_linux_play(orlan_phone* phone, orlan_string path, orlan_linux_task finished,
                              void* context) {
  return onMainOf<Phone>(phone, __func__, [&](Phone& on) {
    auto track = orlan::linuxphone::readTrack(std::string(text(path, "path")));
    if (!track) throw Misuse{ORLAN_INVALID_ARGUMENT, track.error().description};
    on.phone().player().play(std::move(*track), [finished, context] { call(finished, context); });
  });
}

orlan_status orlan_linux_fix(orlan_phone* phone, orlan_location fix) {
  return onMainOf<Phone>(phone, __func__, [&](Phone& on) {
    const orlan::Location location = from(fix);
    on.phone().locations().deliver({&location, 1});
  });
}

orlan_status orlan_linux_move_to(orlan_phone* phone, int32_t state) {
  return onMainOf<Phone>(phone, __func__, [&](Phone& on) {
    if (state < ORLAN_STATE_ACTIVE || state > ORLAN_STATE_BACKGROUND) {
      throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such state"};
    }
    on.phone().application().moveTo(static_cast<orlan::ApplicationState>(state));
  });
}

orlan_status orlan_linux_tap(orlan_phone* phone, const orlan_notification* notification) {
  return onMainOf<Phone>(phone, __func__, [&](Phone& on) {
    on.phone().notifications().tap({from(needed(notification, "notification"))});
  });
}
