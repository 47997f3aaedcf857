#include "orlan/c/monitors.h"

#include "orlan/c/Host.hpp"
#include "orlan/c/Values.hpp"

namespace {

using namespace orlan::c;

class Foreground final : public orlan::ForegroundGeofenceDelegate {
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

class Background final : public orlan::BackgroundGeofenceDelegate {
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

}  // namespace

orlan_status orlan_foreground_set_delegate(const orlan_geofence_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.foregroundDelegate = delegateFrom<Foreground>(delegate);
    Host::services().foregroundMonitor->setDelegate(host.foregroundDelegate);
  });
}

orlan_status orlan_background_set_delegate(const orlan_geofence_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.backgroundDelegate = delegateFrom<Background>(delegate);
    Host::services().backgroundMonitor->setDelegate(host.backgroundDelegate);
  });
}

orlan_status orlan_foreground_start(void) {
  return onMain(__func__, [](Host&) { Host::services().foregroundMonitor->start(nullptr); });
}

orlan_status orlan_foreground_stop(void) {
  return onMain(__func__, [](Host&) { Host::services().foregroundMonitor->stop(); });
}

orlan_status orlan_background_pause(void) {
  return onMain(__func__, [](Host&) { Host::services().backgroundMonitor->pauseMonitoring(); });
}

orlan_status orlan_background_resume(void) {
  return onMain(__func__, [](Host&) { Host::services().backgroundMonitor->resumeMonitoring(); });
}

orlan_status orlan_foreground_clear_cooldown(void) {
  return onMain(__func__, [](Host&) { Host::services().foregroundMonitor->clearCooldown(); });
}

orlan_status orlan_background_clear_cooldown(void) {
  return onMain(__func__, [](Host&) { Host::services().backgroundMonitor->clearCooldown(); });
}
