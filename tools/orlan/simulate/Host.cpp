#include "tools/orlan/simulate/Host.hpp"

namespace orlan::simulate {

Host::Host(sim::SimulatedPhone& phone, const BaseUrls& hosts, Transcript& transcript)
    : center_(phone.notifications()),
      delegate_(recordingDelegate(transcript)),
      runtime_(phone.platform(), {hosts}),
      scope_(runtime_),
      streams_(runtime_.services(), transcript, delegate_) {}

void Host::installBridge() {
  NotificationBridge& bridge = *services().notificationBridge;
  bridge.setDelegate(delegate_);
  center_.setDelegate(bridge.weak_from_this());
}

}  // namespace orlan::simulate
