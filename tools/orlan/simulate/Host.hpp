#pragma once

#include <memory>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/simulated/SimulatedPhone.hpp"
#include "tools/orlan/simulate/ServiceStreams.hpp"

namespace orlan::simulate {

/// The host application's process: the library on the phone, and everybody who listens to it.
class Host {
 public:
  Host(sim::SimulatedPhone& phone, const BaseUrls& hosts, Transcript& transcript);

  [[nodiscard]] OrlanServices& services() { return runtime_.services(); }

  /// Hears how a start ended.
  [[nodiscard]] OrlanPlugin::Delegate delegate() const { return delegate_; }

  /// Puts the bridge in front of the notification centre, with a delegate of the host's behind it.
  void installBridge();

 private:
  NotificationCenter& center_;
  std::shared_ptr<HostDelegate> delegate_;
  Runtime runtime_;
  Runtime::Scope scope_;
  ServiceStreams streams_;
};

}  // namespace orlan::simulate
