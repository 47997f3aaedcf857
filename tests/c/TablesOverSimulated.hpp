#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "orlan/c/Phone.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/c/orlan.h"
#include "support/SimulatedHost.hpp"

namespace orlan::test {

/// A host's function tables in front of a simulated phone, so that what is promised of phones can be asked of
/// the one that the library makes of them, and a host in C can be watched. Its backend knows the device as D1
/// and O1, takes what it is told and has one campaign, a square around 51.5, -0.12 that welcomes.
class TablesOverSimulated {
 public:
  using Change = std::function<void(orlan_phone_parts&)>;

  explicit TablesOverSimulated(const Change& change = {});
  ~TablesOverSimulated() {
    orlan_uninstall();
    EXPECT_EQ(orlan_phone_free(handle), ORLAN_OK) << orlan_last_problem();
  }

  /// Only the main loop; everything else is the library's default.
  static void bare(orlan_phone_parts& parts) { parts = {sizeof parts, parts.loop}; }

  [[nodiscard]] Platform platform() { return c::phoneOf(handle)->platform(); }
  void pass(Duration time = std::chrono::seconds(1)) { world.runFor(time); }
  void answer(const char* path, const sim::HttpAnswer& answer) {
    for (const char* method : {"GET", "POST"}) {
      phone.http().forget(method, path);
      phone.http().answer(method, path, {answer});
    }
  }

  sim::World world;
  Chronicle seen;  // by whoever lets it observe the phone; what is logged in any case
  sim::SimulatedPhone phone{world};
  orlan_phone* handle = nullptr;
  std::atomic<orlan_id> lastTask = 0;  // of the main loop; any thread posts
  orlan_id lastCall = 0;

 private:
  using Self = TablesOverSimulated;

  /// What the hub tells one of its managers, on its way to the library's manager of that number. Number 0
  /// tells of the authorization alone.
  struct Relay final : LocationManagerDelegate {
    Relay(Self& host, orlan_id number) : self(host), id(number) {}
    void didChangeAuthorization(LocationManager&) override {
      if (id == 0) orlan_phone_location_authorization_changed(self.handle);
    }
    void didUpdateLocations(LocationManager&, std::span<const Location> batch) override {
      std::vector<orlan_location> fixes;
      for (const Location& fix : batch) fixes.push_back(c::to(fix));
      orlan_phone_fixes(self.handle, id, fixes.data(), fixes.size());
    }
    void didFail(LocationManager&, const Error& error) override {
      const orlan_error out = c::lent(error);
      orlan_phone_location_failed(self.handle, id, &out);
    }
    void didEnterRegion(LocationManager&, const CircularRegion& region) override {
      const orlan_region out = lend(region);
      if (id != 0) orlan_phone_region_entered(self.handle, id, &out);
    }
    void didExitRegion(LocationManager&, const CircularRegion& region) override {
      const orlan_region out = lend(region);
      if (id != 0) orlan_phone_region_exited(self.handle, id, &out);
    }
    Self& self;
    orlan_id id;
  };
  struct Client {
    std::shared_ptr<LocationManager> manager;
    std::shared_ptr<Relay> relay;
  };

  static Self& of(void* context) { return *static_cast<Self*>(context); }
  static std::string_view view(orlan_string text) { return {text.data, text.length}; }
  static orlan_region lend(const CircularRegion& region) {
    return {c::lent(region.identifier), c::to(region.circle), region.notifyOnEntry, region.notifyOnExit};
  }
  static orlan_value lend(const json::Value& value);
  static json::Value take(const orlan_value& value);
  Client client(orlan_id id, std::string_view name);
  LocationManager& manager(orlan_id id) { return *clients_.at(id).manager; }

  orlan_loop_functions loop();
  orlan_queue_functions queues();
  orlan_store_functions store();
  orlan_file_functions files();
  orlan_http_functions http();
  orlan_location_functions location();
  orlan_notification_functions notifications();
  orlan_log_functions log();

  const std::string caches_ = phone.files().cachesDirectory();
  std::mutex mutex_;
  std::map<orlan_id, std::unique_ptr<SerialQueue>> queues_;
  std::map<orlan_id, Subscription> timers_;
  std::map<orlan_id, Subscription> calls_;
  std::map<orlan_id, Client> clients_;
};

inline std::string copy(orlan_string text) {
  return {text.data, text.length};
}

/// Hears completions and delegates; `then` runs inside each.
struct Ear {
  std::vector<std::string> heard;
  std::function<void()> then;

  void hear(std::string what) {
    heard.push_back(std::move(what));
    if (then) then();
  }
  static Ear& of(void* context) { return *static_cast<Ear*>(context); }
  static std::string named(const orlan_error* error) {
    return copy(error->domain) + " " + std::to_string(error->code);
  }
  static void outcome(void* context, bool succeeded, const orlan_error* error) {
    of(context).hear(succeeded ? "done" : named(error));
  }
  static void text(void* context, const orlan_string* value, const orlan_error* error) {
    of(context).hear(value != nullptr ? copy(*value) : named(error));
  }
  static void optional(void* context, const orlan_string* value) {
    of(context).hear(value != nullptr ? copy(*value) : "none");
  }
  static void integer(void* context, std::int64_t value) { of(context).hear(std::to_string(value)); }
  orlan_plugin_delegate delegate() {
    return {sizeof(orlan_plugin_delegate), this,
            [](void* context, orlan_string device, orlan_string orlan) {
              of(context).hear(copy(device) + " " + copy(orlan));
            },
            [](void* context, const orlan_error* error) { of(context).hear(named(error)); }};
  }
};

}  // namespace orlan::test
