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
struct TablesOverSimulated {
  using Change = std::function<void(orlan_phone_parts&)>;

  explicit TablesOverSimulated(const Change& change = {});
  TablesOverSimulated(const TablesOverSimulated&) = delete;
  TablesOverSimulated& operator=(const TablesOverSimulated&) = delete;
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

  // What the tables keep.
  struct Kept {
    std::string text;
    orlan_value value;
  };
  struct Client {
    std::shared_ptr<LocationManager> manager;
    std::shared_ptr<LocationManagerDelegate> relay;
  };
  const std::string caches = phone.files().cachesDirectory();
  std::mutex mutex;  // of the queues and the store, which any thread uses
  std::map<orlan_id, std::unique_ptr<SerialQueue>> queues;
  std::map<std::string, Kept, std::less<>> store;
  std::map<orlan_id, Subscription> timers;
  std::map<orlan_id, Subscription> calls;
  std::map<orlan_id, Client> clients;
};

inline std::string copy(orlan_string text) {
  return {text.data, text.length};
}

/// The text that `get` gives to be freed.
template <class Get>
std::string textFrom(Get get) {
  orlan_string text{};
  EXPECT_EQ(get(&text), ORLAN_OK) << orlan_last_problem();
  std::string found = copy(text);
  orlan_string_free(text);
  return found;
}

/// What a callback is given, in words; "-" for what is absent.
inline std::string words(std::int64_t number) {
  return std::to_string(number);
}
inline std::string words(orlan_string text) {
  return text.data == nullptr ? "-" : copy(text);
}
inline std::string words(orlan_crossing crossing) {
  return words(crossing.campaign_id) + "@" + words(crossing.location_id);
}
inline std::string words(const orlan_error& error) {
  return words(error.domain) + " " + words(error.code);
}
inline std::string words(const orlan_location& fix) {
  return std::to_string(fix.coordinate.latitude);
}
inline std::string words(const orlan_circle& circle) {
  return std::to_string(circle.centre.latitude);
}
inline std::string words(const orlan_polygon& polygon) {
  return std::to_string(polygon.vertices[polygon.count - 1].latitude);
}
inline std::string words(const orlan_notification& notification) {
  return words(notification.title) + " " + words(notification.user_info) + " " + words(notification.badge);
}
inline std::string words(const orlan_notification_details& details) {
  return words(details.headline) + " " + words(details.questions) + " " + words(details.cta_url);
}
template <class T>
std::string words(const T* given) {
  return given == nullptr ? "-" : words(*given);
}

/// Hears completions, streams and delegates; `then` runs inside each.
struct Ear {
  std::vector<std::string> heard;
  std::function<void()> then;

  void hear(std::string what) {
    heard.push_back(std::move(what));
    if (then) then();
  }
};

/// Any callback whose context is an ear: its arguments one after the other.
inline constexpr auto hears = [](void* ear, auto... given) {
  std::string all;
  ((all += (all.empty() ? "" : " ") + words(given)), ...);
  static_cast<Ear*>(ear)->hear(std::move(all));
};
/// One of several values: how many, and the last.
inline constexpr auto hearsList = [](void* ear, const auto* given, std::size_t count) {
  static_cast<Ear*>(ear)->hear(words(count) + (count > 0 ? " " + words(given[count - 1]) : ""));
};
inline orlan_plugin_delegate delegateFor(Ear& ear) {
  return {sizeof(orlan_plugin_delegate), &ear, hears, hears};
}

}  // namespace orlan::test
