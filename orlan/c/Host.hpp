#pragma once

#include <memory>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Phone.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"

namespace orlan::c {

/// What `orlan_install` made. The delegates are the host's tables, held here because the services hold them
/// weakly.
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

/// The installed one, on its main thread or on any; a `Misuse` else.
[[nodiscard]] Host& hostOnMain();
[[nodiscard]] Host& hostOnAnyThread();

[[nodiscard]] bool isInstalled(const PhoneModel& phone);

/// Runs the body of an operation of an installed library, on the main thread.
template <class Body>
orlan_status onMain(const char* function, Body&& body) noexcept {
  return guarded(function, [&] { body(hostOnMain()); });
}

}  // namespace orlan::c
