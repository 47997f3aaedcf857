#include "tools/orlan/simulate/HostDelegate.hpp"

#include <utility>

#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::simulate {
namespace {

class RecordingDelegate final : public HostDelegate {
 public:
  explicit RecordingDelegate(Transcript& transcript) : transcript_(transcript) {}

  void didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string& orlanID) override {
    called("OrlanPluginDelegate", "orlanPlugin(_:didAuthenticate:orlanID:)", {deviceID, orlanID});
  }
  void didFailWith(OrlanPlugin&, const Error& error) override {
    called("OrlanPluginDelegate", "orlanPlugin(_:didFailWith:)", {formOf(error)});
  }
  void orlanDidReceive(const NotificationResponse& response) override {
    called("OrlanNotificationDelegate", "orlanDidReceive(_:)", {formOf(response)});
  }
  void didEnterCampaign(std::int64_t campaignID, std::int64_t locationID) override {
    called("ForegroundGeofenceDelegate", "didEnterCampaign(_:locationID:)", {campaignID, locationID});
  }
  void didExitCampaign(std::int64_t campaignID, std::int64_t locationID) override {
    called("ForegroundGeofenceDelegate", "didExitCampaign(_:locationID:)", {campaignID, locationID});
  }
  void didEnterRegion(std::int64_t campaignID, std::int64_t locationID) override {
    called("BackgroundGeofenceDelegate", "didEnterRegion(_:locationID:)", {campaignID, locationID});
  }
  void didExitRegion(std::int64_t campaignID, std::int64_t locationID) override {
    called("BackgroundGeofenceDelegate", "didExitRegion(_:locationID:)", {campaignID, locationID});
  }

 private:
  void called(std::string_view to, std::string_view method, json::Array arguments) {
    transcript_.delegateCalled(to, method, std::move(arguments));
  }
  Transcript& transcript_;
};

}  // namespace

std::shared_ptr<HostDelegate> recordingDelegate(Transcript& transcript) {
  return std::make_shared<RecordingDelegate>(transcript);
}

}  // namespace orlan::simulate
