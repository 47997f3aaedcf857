#include "orlan/c/monitors.h"

#include "orlan/c/Delegates.hpp"
#include "orlan/c/Host.hpp"

using namespace orlan::c;

orlan_status orlan_foreground_set_delegate(const orlan_geofence_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.foregroundDelegate = foregroundDelegateFrom(delegate);
    Host::services().foregroundMonitor->setDelegate(host.foregroundDelegate);
  });
}

orlan_status orlan_background_set_delegate(const orlan_geofence_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.backgroundDelegate = backgroundDelegateFrom(delegate);
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
