#pragma once

#include <string>

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/MainGate.hpp"
#include "orlan/platform/Platform.hpp"

namespace orlan {

/// Posts the notifications that are to be shown at once, wherever the device is; each at most once in 24
/// hours from the last time that the notification centre took it. Main thread.
class PushDispatch {
 public:
  PushDispatch(const Platform& phone, Logger& logger, Lazy<APIService>& api);

  void dispatch(const CampaignData& data);

 private:
  using Campaign = CampaignData::Campaign;
  using Notification = CampaignData::Notification;

  void schedule(const Campaign& campaign, const Notification& notification, const std::string& key);

  Clock& clock_;
  KeyValueStore& store_;
  NotificationCenter& notifications_;
  Logger& logger_;
  Lazy<APIService>& api_;
  MainGate gate_;
};

}  // namespace orlan
