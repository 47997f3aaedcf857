#include "phones/c/TableLocations.hpp"

#include <string>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"
#include "phones/c/TableStorage.hpp"
#include "phones/common/LocationClient.hpp"
#include "phones/common/RegionMonitor.hpp"

namespace orlan::c {

/// What all managers of a phone share.
struct TableLocations::Service {
  Service(const orlan_location_functions& functions, MainLoop& loop, std::shared_ptr<Tasks> phoneIds)
      : table(functions), main(loop), ids(std::move(phoneIds)) {}

  const orlan_location_functions table;
  MainLoop& main;
  const std::shared_ptr<Tasks> ids;
  std::map<orlan_id, std::weak_ptr<Manager>> managers;  // in the order of making
  std::optional<Location> last;                         // that was told
  phone::RegionMonitor regions;                         // of phones that do not list theirs

  template <class Function, class... Args>
  auto asked(Function* function, Args... args) const {
    return ask(function, table.context, args...);
  }
  [[nodiscard]] std::vector<CircularRegion> watched() const;
};

/// One client of the host's location service.
class TableLocations::Manager final : public phone::LocationClient {
 public:
  Manager(std::shared_ptr<Service> service, std::string_view name);
  ~Manager() override;
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  [[nodiscard]] LocationAuthorization authorizationStatus() const override;
  void requestWhenInUseAuthorization() override { service_->asked(table().request_authorization, false); }
  void requestAlwaysAuthorization() override { service_->asked(table().request_authorization, true); }
  void setDesiredAccuracy(double metres) override {
    service_->asked(table().set_desired_accuracy, id_, metres);
  }
  void setDistanceFilter(double metres) override {
    LocationClient::setDistanceFilter(metres);
    service_->asked(table().set_distance_filter, id_, metres);
  }
  void setAllowsBackgroundUpdates(bool allowed) override {
    service_->asked(table().set_background_updates, id_, allowed);
  }
  [[nodiscard]] std::optional<Location> location() const override;
  void startMonitoring(const CircularRegion& region) override;
  void stopMonitoring(std::string_view identifier) override;
  [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return service_->watched(); }

  [[nodiscard]] orlan_id id() const { return id_; }

 private:
  [[nodiscard]] const orlan_location_functions& table() const { return service_->table; }
  void setUpdating(bool running) override;
  void setSignificant(bool running) override;

  const std::shared_ptr<Service> service_;
  const orlan_id id_;
};

std::vector<CircularRegion> TableLocations::Service::watched() const {
  if (table.regions == nullptr) return regions.regions();
  orlan_answer answer;
  asked(table.regions, &answer);
  return std::move(answer.regions);
}

TableLocations::Manager::Manager(std::shared_ptr<Service> service, std::string_view name)
    : LocationClient(service->main), service_(std::move(service)), id_(service_->ids->nextId()) {
  const std::string text(name);
  service_->asked(table().made, id_, lent(text));
}

TableLocations::Manager::~Manager() {
  service_->managers.erase(id_);
  service_->asked(table().gone, id_);
}

LocationAuthorization TableLocations::Manager::authorizationStatus() const {
  if (table().authorization == nullptr) return LocationAuthorization::authorizedAlways;
  return fromRawValue<LocationAuthorization>(std::int64_t{service_->asked(table().authorization)})
      .value_or(LocationAuthorization::notDetermined);
}

void TableLocations::Manager::setUpdating(bool running) {
  LocationClient::setUpdating(running);
  service_->asked(table().set_updating, id_, running);
}

void TableLocations::Manager::setSignificant(bool running) {
  LocationClient::setSignificant(running);
  service_->asked(table().set_significant_changes, id_, running);
}

std::optional<Location> TableLocations::Manager::location() const {
  if (table().last_location == nullptr) return service_->last;
  orlan_location found{};
  if (!service_->asked(table().last_location, &found)) return std::nullopt;
  return from(found);
}

void TableLocations::Manager::startMonitoring(const CircularRegion& region) {
  phone::RegionMonitor watched;
  for (const CircularRegion& each : service_->watched()) watched.start(each);
  if (!watched.start(region)) return;
  if (table().regions == nullptr) service_->regions = std::move(watched);
  const orlan_region out{lent(region.identifier), to(region.circle), region.notifyOnEntry,
                         region.notifyOnExit};
  service_->asked(table().start_region, &out);
}

void TableLocations::Manager::stopMonitoring(std::string_view identifier) {
  const std::string name(identifier);
  service_->regions.stop(name);
  service_->asked(table().stop_region, lent(name));
}

TableLocations::TableLocations(const orlan_location_functions& table, MainLoop& main,
                               std::shared_ptr<Tasks> ids)
    : service_(std::make_shared<Service>(table, main, std::move(ids))) {}

TableLocations::~TableLocations() = default;

std::shared_ptr<LocationManager> TableLocations::makeManager(std::string_view name) {
  service_->main.assertCurrent();
  auto manager = std::make_shared<Manager>(service_, name);
  service_->managers.insert_or_assign(manager->id(), manager);
  return manager;
}

void TableLocations::tell(orlan_id manager,
                          const std::function<void(LocationManager&, LocationManagerDelegate&)>& tellOne) {
  const auto all = service_->managers;  // delegates may make and drop managers
  for (const auto& [id, weak] : all) {
    if (manager != ORLAN_ALL_MANAGERS && manager != id) continue;
    const auto living = weak.lock();
    const auto delegate = living ? living->delegate() : nullptr;
    if (delegate) tellOne(*living, *delegate);
  }
}

void TableLocations::fixes(orlan_id manager, std::span<const Location> fixes) {
  if (fixes.empty()) return;
  service_->last = fixes.back();
  const Place here(fixes.back().coordinate);
  tell(manager, [&](LocationManager& each, LocationManagerDelegate& delegate) {
    auto& client = static_cast<Manager&>(each);
    const bool forAll = manager == ORLAN_ALL_MANAGERS;
    if (forAll && !(phone::isAuthorized(client.authorizationStatus()) && client.wants(here))) return;
    delegate.didUpdateLocations(each, fixes);
  });
}

}  // namespace orlan::c
