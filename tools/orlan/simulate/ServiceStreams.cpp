#include "tools/orlan/simulate/ServiceStreams.hpp"

#include <utility>

#include "orlan/campaigns/CampaignFields.hpp"
#include "tools/orlan/simulate/HostDelegate.hpp"
#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::simulate {
struct ServiceStreams::Parts {
  Parts(Transcript& lines, std::shared_ptr<HostDelegate> host)
      : transcript(lines), delegate(std::move(host)) {}

  /// Lists what `stream` emits from now on, in the form that `form` gives it; not the current value, which
  /// some streams deliver while they are being subscribed to.
  template <class T, class Form>
  void list(Publisher<T>& stream, std::string_view name, Form form) {
    subscribing = true;
    subscriptions.add(stream.subscribe([this, name, form](const T& value) {
      if (!subscribing && transcript.wants(Transcript::Event::publish)) {
        transcript.published(name, form(value));
      }
    }));
    subscribing = false;
  }

  void watch(LocationPermissionManager& manager) {
    list(manager.statusPublisher(), "locationAuthorization",
         [](LocationAuthorization status) { return rawValue(status); });
    list(manager.lastLocationPublisher(), "lastLocation",
         [](const std::optional<Location>& fix) { return fix ? formOf(*fix) : json::Value(); });
  }
  void watch(NotificationPermissionManager& manager) {
    list(manager.statusPublisher(), "pushAuthorization",
         [](NotificationAuthorization status) { return rawValue(status); });
  }
  void watch(NotificationManager& manager) {
    list(manager.publisher(), "notifications",
         [](const OrlanNotificationDetails& details) { return formOf(details); });
    list(manager.latestPublisher(), "latest", [](const std::optional<OrlanNotificationDetails>& details) {
      return details ? formOf(*details) : json::Value();
    });
  }
  void watch(GeofenceService& service) {
    list(service.polygonsPublisherPublic(), "polygons",
         [](const std::vector<Polygon>& polygons) { return formOf(polygons); });
    list(service.campaigns(), "campaigns", [](const CampaignData& data) { return json::encode(data); });
  }
  void watch(LocationTrackingReliability& reliability) {
    list(reliability.reliabilityStatusSubject(), "reliability",
         [](ReliabilityStatus status) { return rawValue(status); });
  }
  void watch(ForegroundGeofenceMonitor& monitor) {
    monitor.setDelegate(delegate);
    listCrossings(monitor, "foreground");
  }
  void watch(BackgroundRegionMonitor& monitor) {
    monitor.setDelegate(delegate);
    listCrossings(monitor, "background");
    list(monitor.circlesPublisher(), "circles",
         [](const std::vector<Circle>& circles) { return formOf(circles); });
  }

  template <class Monitor>
  void listCrossings(Monitor& monitor, std::string_view name) {
    const auto follow = [this, name](Publisher<Crossing>& stream, std::string_view direction) {
      subscriptions.add(stream.subscribe([this, name, direction](const Crossing& crossing) {
        transcript.crossed(direction, name, json::Array{crossing.first, crossing.second});
      }));
    };
    follow(monitor.enterPublisher(), "enter");
    follow(monitor.exitPublisher(), "exit");
  }

  Transcript& transcript;
  std::shared_ptr<HostDelegate> delegate;
  SubscriptionBag subscriptions;
  bool subscribing = false;
};

ServiceStreams::ServiceStreams(OrlanServices& services, Transcript& transcript,
                               std::shared_ptr<HostDelegate> delegate)
    : parts_(std::make_shared<Parts>(transcript, std::move(delegate))) {
  const auto follow = [this](auto& slot) {
    slot.onBuilt([parts = std::weak_ptr(parts_)](auto& service) {
      if (const auto held = parts.lock()) held->watch(service);
    });
  };
  follow(services.locationPermission);
  follow(services.notificationPermission);
  follow(services.notificationManager);
  follow(services.geofence);
  follow(services.reliability);
  follow(services.foregroundMonitor);
  follow(services.backgroundMonitor);
}

ServiceStreams::~ServiceStreams() = default;

}  // namespace orlan::simulate
