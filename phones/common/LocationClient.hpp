#pragma once

#include <memory>

#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/common/DistanceFilter.hpp"

namespace orlan::phone {

/// Whether the person lets the application know where the phone is.
[[nodiscard]] bool isAuthorized(LocationAuthorization status);

/// What a location manager knows of its client on any phone: its delegate, what runs, and where it was told
/// of last.
class LocationClient : public LocationManager, public std::enable_shared_from_this<LocationClient> {
 public:
  explicit LocationClient(MainLoop& main) : main_(main) {}

  /// A new delegate hears the authorization on the next turn.
  void setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) final;
  void setDistanceFilter(double metres) override { distanceFilter_ = metres; }
  void startUpdatingLocation() final { setUpdating(true); }
  void stopUpdatingLocation() final { setUpdating(false); }
  void startMonitoringSignificantChanges() final { setSignificant(true); }
  void stopMonitoringSignificantChanges() final { setSignificant(false); }

  [[nodiscard]] std::shared_ptr<LocationManagerDelegate> delegate() const { return delegate_.lock(); }
  [[nodiscard]] bool running() const { return updating_ || significant_; }

  /// Whether a fix there is one that what runs lets pass, which it then has.
  [[nodiscard]] bool wants(const Place& here);

 protected:
  virtual void setUpdating(bool running);
  virtual void setSignificant(bool running);

  [[nodiscard]] MainLoop& main() const { return main_; }
  [[nodiscard]] double distanceFilter() const { return distanceFilter_; }

 private:
  MainLoop& main_;
  std::weak_ptr<LocationManagerDelegate> delegate_;
  double distanceFilter_ = distanceFilterNone;
  bool updating_ = false;
  bool significant_ = false;
  DistanceFilter sinceUpdate_;
  DistanceFilter sinceChange_;
};

}  // namespace orlan::phone
