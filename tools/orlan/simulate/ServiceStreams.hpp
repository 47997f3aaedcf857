#pragma once

#include <memory>

#include "orlan/sdk/OrlanServices.hpp"
#include "tools/orlan/simulate/HostDelegate.hpp"

namespace orlan::simulate {

/// Writes down what the library's services tell their subscribers, and makes the host's delegate the
/// monitors', from the moment each comes to life; brings none to life. Ends before the services do.
class ServiceStreams {
 public:
  ServiceStreams(OrlanServices& services, Transcript& transcript, std::shared_ptr<HostDelegate> delegate);
  ~ServiceStreams();

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;
};

}  // namespace orlan::simulate
