#include "tools/orlan/simulate/ServiceStreams.hpp"

#include <utility>

#include "orlan/campaigns/CampaignFields.hpp"
#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::simulate {
namespace {

class RecordingPluginDelegate final : public OrlanPluginDelegate {
 public:
  explicit RecordingPluginDelegate(Transcript& transcript) : transcript_(transcript) {}

  void didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string& orlanID) override {
    called("orlanPlugin(_:didAuthenticate:orlanID:)", {deviceID, orlanID});
  }
  void didFailWith(OrlanPlugin&, const Error& error) override {
    called("orlanPlugin(_:didFailWith:)", {formOf(error)});
  }

 private:
  void called(std::string_view method, json::Array arguments) {
    transcript_.delegateCalled("OrlanPluginDelegate", method, std::move(arguments));
  }
  Transcript& transcript_;
};

/// The delegates of both monitors: they hear the same under different names.
class RecordingMonitorDelegate final : public ForegroundGeofenceDelegate, public BackgroundGeofenceDelegate {
 public:
  explicit RecordingMonitorDelegate(Transcript& transcript) : transcript_(transcript) {}

  void didEnterCampaign(std::int64_t campaignID, std::int64_t locationID) override {
    called("ForegroundGeofenceDelegate", "didEnterCampaign(_:locationID:)", campaignID, locationID);
  }
  void didExitCampaign(std::int64_t campaignID, std::int64_t locationID) override {
    called("ForegroundGeofenceDelegate", "didExitCampaign(_:locationID:)", campaignID, locationID);
  }
  void didEnterRegion(std::int64_t campaignID, std::int64_t locationID) override {
    called("BackgroundGeofenceDelegate", "didEnterRegion(_:locationID:)", campaignID, locationID);
  }
  void didExitRegion(std::int64_t campaignID, std::int64_t locationID) override {
    called("BackgroundGeofenceDelegate", "didExitRegion(_:locationID:)", campaignID, locationID);
  }

 private:
  void called(std::string_view to, std::string_view method, std::int64_t campaignID,
              std::int64_t locationID) {
    transcript_.delegateCalled(to, method, {campaignID, locationID});
  }
  Transcript& transcript_;
};

}  // namespace

struct ServiceStreams::Parts {
  explicit Parts(Transcript& lines)
      : transcript(lines), monitorDelegate(std::make_shared<RecordingMonitorDelegate>(lines)) {}

  /// Lists what `stream` emits from now on, in the form that `form` gives it.
  template <class T, class Form>
  void list(Publisher<T>& stream, std::string_view name, Form form) {
    subscriptions.add(
        stream.subscribe([this, name, form](const T& value) { transcript.published(name, form(value)); }));
  }

  void watch(LocationPermissionManager& manager) {
    list(manager.statusPublisher().changes(), "locationAuthorization",
         [](LocationAuthorization status) { return rawValue(status); });
    list(manager.lastLocationPublisher().changes(), "lastLocation",
         [](const std::optional<Location>& fix) { return fix ? formOf(*fix) : json::Value(); });
  }
  void watch(NotificationPermissionManager& manager) {
    list(manager.statusPublisher().changes(), "pushAuthorization",
         [](NotificationAuthorization status) { return rawValue(status); });
  }
  void watch(GeofenceService& service) {
    list(service.polygonsPublisherPublic().changes(), "polygons",
         [](const std::vector<Polygon>& polygons) { return formOf(polygons); });
    list(service.campaigns(), "campaigns", [](const CampaignData& data) { return json::encode(data); });
  }
  void watch(LocationTrackingReliability& reliability) {
    list(reliability.reliabilityStatusSubject(), "reliability",
         [](ReliabilityStatus status) { return rawValue(status); });
  }
  void watch(ForegroundGeofenceMonitor& monitor) {
    monitor.setDelegate(monitorDelegate);
    listCrossings(monitor, "foreground");
  }
  void watch(BackgroundRegionMonitor& monitor) {
    monitor.setDelegate(monitorDelegate);
    listCrossings(monitor, "background");
    list(monitor.circlesPublisher().changes(), "circles",
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
  std::shared_ptr<RecordingMonitorDelegate> monitorDelegate;
  SubscriptionBag subscriptions;
};

ServiceStreams::ServiceStreams(OrlanServices& services, Transcript& transcript)
    : parts_(std::make_shared<Parts>(transcript)) {
  const auto follow = [this](auto& slot) {
    slot.onBuilt([parts = std::weak_ptr(parts_)](auto& service) {
      if (const auto held = parts.lock()) held->watch(service);
    });
  };
  follow(services.locationPermission);
  follow(services.notificationPermission);
  follow(services.geofence);
  follow(services.reliability);
  follow(services.foregroundMonitor);
  follow(services.backgroundMonitor);
}

ServiceStreams::~ServiceStreams() = default;

std::shared_ptr<OrlanPluginDelegate> recordingDelegate(Transcript& transcript) {
  return std::make_shared<RecordingPluginDelegate>(transcript);
}

}  // namespace orlan::simulate
