#include "orlan/c/monitors.h"

#include "orlan/c/Host.hpp"
#include "orlan/c/Values.hpp"

namespace {

using namespace orlan::c;

/// The host's table for either monitor.
class Crossings final : public orlan::ForegroundGeofenceDelegate, public orlan::BackgroundGeofenceDelegate {
 public:
  explicit Crossings(const orlan_geofence_delegate& table) : table_(table) {}
  void didEnterCampaign(std::int64_t campaign, std::int64_t location) override {
    entered(campaign, location);
  }
  void didEnterRegion(std::int64_t campaign, std::int64_t location) override { entered(campaign, location); }
  void didExitCampaign(std::int64_t campaign, std::int64_t location) override { left(campaign, location); }
  void didExitRegion(std::int64_t campaign, std::int64_t location) override { left(campaign, location); }

 private:
  void entered(std::int64_t campaign, std::int64_t location) {
    call(table_.did_enter, table_.context, orlan_crossing{campaign, location});
  }
  void left(std::int64_t campaign, std::int64_t location) {
    call(table_.did_exit, table_.context, orlan_crossing{campaign, location});
  }

  const orlan_geofence_delegate table_;
};

}  // namespace

orlan_status orlan_foreground_set_delegate(const orlan_geofence_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.foregroundDelegate = delegateFrom<Crossings>(delegate);
    Host::services().foregroundMonitor->setDelegate(host.foregroundDelegate);
  });
}

orlan_status orlan_background_set_delegate(const orlan_geofence_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.backgroundDelegate = delegateFrom<Crossings>(delegate);
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
