#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "orlan/c/Tasks.hpp"
#include "orlan/c/phone.h"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan::c {

/// The host's location service. Main thread.
class TableLocations final : public LocationService {
 public:
  TableLocations(const orlan_location_functions& table, MainLoop& main, std::shared_ptr<Tasks> ids);
  ~TableLocations() override;

  [[nodiscard]] std::shared_ptr<LocationManager> makeManager(std::string_view name) override;

  // What the host tells, for one manager or for `ORLAN_ALL_MANAGERS`. One that is gone hears nothing.
  void fixes(orlan_id manager, std::span<const Location> fixes);
  void failed(orlan_id manager, const Error& error);
  void authorizationChanged();
  void entered(orlan_id manager, const CircularRegion& region);
  void exited(orlan_id manager, const CircularRegion& region);

 private:
  class Manager;
  struct Service;
  void tell(orlan_id manager, const std::function<void(Manager&, LocationManagerDelegate&)>& tell);

  const std::shared_ptr<Service> service_;
};

}  // namespace orlan::c
