#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "orlan/c/phone.h"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/c/Tasks.hpp"

namespace orlan::c {

/// The host's location service. Main thread.
class TableLocations final : public LocationService {
 public:
  TableLocations(const orlan_location_functions& table, MainLoop& main, std::shared_ptr<Tasks> ids);
  ~TableLocations() override;

  [[nodiscard]] std::shared_ptr<LocationManager> makeManager(std::string_view name) override;

  /// What the host tells, for one manager or for `ORLAN_ALL_MANAGERS`. One that is gone hears nothing.
  void tell(orlan_id manager, const std::function<void(LocationManager&, LocationManagerDelegate&)>& tellOne);
  void fixes(orlan_id manager, std::span<const Location> fixes);

 private:
  class Manager;
  struct Service;

  const std::shared_ptr<Service> service_;
};

}  // namespace orlan::c
