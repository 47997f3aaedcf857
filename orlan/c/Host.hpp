#pragma once

#include <memory>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Phone.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"

namespace orlan::c {

/// What `orlan_install` made. It visits the phone, which so outlives it. The delegates are the host's tables,
/// held here because the services hold them weakly.
struct Host {
  explicit Host(std::shared_ptr<PhoneModel> model) : phone(std::move(model)), platform(phone->platform()) {}

  std::shared_ptr<PhoneModel> phone;
  Platform platform;
  std::shared_ptr<OrlanPluginDelegate> pluginDelegate;
  std::shared_ptr<ForegroundGeofenceDelegate> foregroundDelegate;
  std::shared_ptr<BackgroundGeofenceDelegate> backgroundDelegate;
  std::shared_ptr<OrlanNotificationDelegate> bridgeDelegate;

  [[nodiscard]] static OrlanServices& services() { return Runtime::current().services(); }
  [[nodiscard]] static OrlanPlugin& plugin() { return *services().plugin; }
};

/// The installed one, if any. Any thread: the result keeps it, but not what belongs to the main thread.
[[nodiscard]] std::shared_ptr<Host> installedHost();

/// The installed one, on its main thread or on any; a `Misuse` else.
[[nodiscard]] std::shared_ptr<Host> hostOnMain();
[[nodiscard]] std::shared_ptr<Host> hostOnAnyThread();

/// Runs the body of an operation of an installed library, on the main thread.
template <class Body>
orlan_status onMain(const char* function, Body&& body) noexcept {
  return guarded(function, [&] { body(*hostOnMain()); });
}

}  // namespace orlan::c
