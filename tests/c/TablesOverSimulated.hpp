#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "orlan/c/Phone.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/c/phone.h"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {

/// A host's function tables in front of a simulated phone, so that what is promised of phones can be asked of
/// the one that the library makes of them.
class TablesOverSimulated {
 public:
  /// `bare`: only the main loop; everything else is the library's default.
  explicit TablesOverSimulated(bool bare = false);
  ~TablesOverSimulated() { EXPECT_EQ(orlan_phone_free(handle), ORLAN_OK) << orlan_last_problem(); }

  [[nodiscard]] Platform platform() { return c::phoneOf(handle)->platform(); }

  sim::World world;
  sim::SimulatedPhone phone{world};
  orlan_phone* handle = nullptr;

 private:
  using Self = TablesOverSimulated;

  /// What the hub tells one of its managers, on its way to the library's manager of that number.
  struct Ear final : LocationManagerDelegate {
    Ear(Self& host, orlan_id number) : self(host), id(number) {}
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
      orlan_phone_region_entered(self.handle, id, &out);
    }
    void didExitRegion(LocationManager&, const CircularRegion& region) override {
      const orlan_region out = lend(region);
      orlan_phone_region_exited(self.handle, id, &out);
    }
    Self& self;
    orlan_id id;
  };
  /// One of all managers tells of the authorization; the hub tells it at once, which is no change.
  struct AuthorizationEar final : LocationManagerDelegate {
    explicit AuthorizationEar(Self& host) : self(host) {}
    void didChangeAuthorization(LocationManager&) override {
      orlan_phone_location_authorization_changed(self.handle);
    }
    Self& self;
  };
  struct Client {
    std::shared_ptr<LocationManager> manager;
    std::shared_ptr<Ear> ear;
  };

  static Self& of(void* context) { return *static_cast<Self*>(context); }
  static std::string_view view(orlan_string text) { return {text.data, text.length}; }
  static orlan_region lend(const CircularRegion& region) {
    return {c::lent(region.identifier), c::to(region.circle), region.notifyOnEntry, region.notifyOnExit};
  }
  static orlan_value lend(const json::Value& value);
  static json::Value take(const orlan_value& value);
  LocationManager& manager(orlan_id id) { return *clients_.at(id).manager; }

  orlan_loop_functions loop();
  orlan_queue_functions queues();
  orlan_store_functions store();
  orlan_file_functions files();
  orlan_http_functions http();
  orlan_location_functions location();

  std::mutex mutex_;
  std::map<orlan_id, std::unique_ptr<SerialQueue>> queues_;
  std::map<orlan_id, Subscription> timers_;
  std::map<orlan_id, Subscription> calls_;
  std::map<orlan_id, Client> clients_;
  std::shared_ptr<LocationManager> any_ = phone.locations().makeManager("any");
  std::shared_ptr<AuthorizationEar> ear_ = std::make_shared<AuthorizationEar>(*this);
};

}  // namespace orlan::test
