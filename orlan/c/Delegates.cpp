#include "orlan/c/Delegates.hpp"

#include "orlan/c/Guard.hpp"
#include "orlan/c/Notifications.hpp"
#include "orlan/c/Values.hpp"

namespace orlan::c {
namespace {

class Plugin final : public OrlanPluginDelegate {
 public:
  explicit Plugin(const orlan_plugin_delegate& table) : table_(table) {}
  void didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string& orlanID) override {
    call(table_.did_authenticate, table_.context, lent(deviceID), lent(orlanID));
  }
  void didFailWith(OrlanPlugin&, const Error& error) override {
    const orlan_error out = lent(error);
    call(table_.did_fail, table_.context, &out);
  }

 private:
  const orlan_plugin_delegate table_;
};

class Foreground final : public ForegroundGeofenceDelegate {
 public:
  explicit Foreground(const orlan_geofence_delegate& table) : table_(table) {}
  void didEnterCampaign(std::int64_t campaignID, std::int64_t locationID) override {
    call(table_.did_enter, table_.context, orlan_crossing{campaignID, locationID});
  }
  void didExitCampaign(std::int64_t campaignID, std::int64_t locationID) override {
    call(table_.did_exit, table_.context, orlan_crossing{campaignID, locationID});
  }

 private:
  const orlan_geofence_delegate table_;
};

class Background final : public BackgroundGeofenceDelegate {
 public:
  explicit Background(const orlan_geofence_delegate& table) : table_(table) {}
  void didEnterRegion(std::int64_t campaignID, std::int64_t locationID) override {
    call(table_.did_enter, table_.context, orlan_crossing{campaignID, locationID});
  }
  void didExitRegion(std::int64_t campaignID, std::int64_t locationID) override {
    call(table_.did_exit, table_.context, orlan_crossing{campaignID, locationID});
  }

 private:
  const orlan_geofence_delegate table_;
};

class Bridge final : public OrlanNotificationDelegate {
 public:
  explicit Bridge(const orlan_notification_delegate& table) : table_(table) {}
  void orlanDidReceive(const NotificationResponse& response) override {
    const LentNotification out(response.request);
    call(table_.did_receive, table_.context, out.get(), lent(response.actionIdentifier));
  }

 private:
  const orlan_notification_delegate table_;
};

template <class Delegate, class Table>
std::shared_ptr<Delegate> made(const Table* given) {
  if (given == nullptr) return nullptr;
  return std::make_shared<Delegate>(tableFrom(given, "delegate"));
}

}  // namespace

std::shared_ptr<OrlanPluginDelegate> delegateFrom(const orlan_plugin_delegate* given) {
  return made<Plugin>(given);
}
std::shared_ptr<ForegroundGeofenceDelegate> foregroundDelegateFrom(const orlan_geofence_delegate* given) {
  return made<Foreground>(given);
}
std::shared_ptr<BackgroundGeofenceDelegate> backgroundDelegateFrom(const orlan_geofence_delegate* given) {
  return made<Background>(given);
}
std::shared_ptr<OrlanNotificationDelegate> delegateFrom(const orlan_notification_delegate* given) {
  return made<Bridge>(given);
}

}  // namespace orlan::c
