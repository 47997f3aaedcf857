#include "tools/orlan/simulate/Host.hpp"

#include "tools/orlan/simulate/recordingDelegates.hpp"

namespace orlan::simulate {

Host::Host(sim::SimulatedPhone& phone, const BaseUrls& hosts, Transcript& transcript)
    : center_(phone.notifications()),
      delegate_(recordingPluginDelegate(transcript)),
      notificationDelegate_(recordingNotificationDelegate(transcript)),
      runtime_(phone.platform(), {hosts}),
      scope_(runtime_),
      streams_(runtime_.services(), transcript) {}

void Host::installBridge() {
  NotificationBridge& bridge = *services().notificationBridge;
  bridge.setDelegate(notificationDelegate_);
  center_.setDelegate(bridge.weak_from_this());
}

}  // namespace orlan::simulate
