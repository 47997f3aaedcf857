#include "tools/orlan/simulate/recordingDelegates.hpp"

#include <utility>

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

class RecordingNotificationDelegate final : public OrlanNotificationDelegate {
 public:
  explicit RecordingNotificationDelegate(Transcript& transcript) : transcript_(transcript) {}

  void orlanDidReceive(const NotificationResponse& response) override {
    transcript_.delegateCalled("OrlanNotificationDelegate", "orlanDidReceive(_:)", {formOf(response)});
  }

 private:
  Transcript& transcript_;
};

class RecordingMonitorDelegate final : public MonitorDelegate {
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

std::shared_ptr<OrlanPluginDelegate> recordingPluginDelegate(Transcript& transcript) {
  return std::make_shared<RecordingPluginDelegate>(transcript);
}

std::shared_ptr<OrlanNotificationDelegate> recordingNotificationDelegate(Transcript& transcript) {
  return std::make_shared<RecordingNotificationDelegate>(transcript);
}

std::shared_ptr<MonitorDelegate> recordingMonitorDelegate(Transcript& transcript) {
  return std::make_shared<RecordingMonitorDelegate>(transcript);
}

}  // namespace orlan::simulate
