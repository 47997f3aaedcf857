#pragma once

#include <memory>

namespace orlan {

struct CampaignData;

/// Where the notification handling looks up the campaigns of the moment. Main thread.
class CampaignSource {
 public:
  virtual ~CampaignSource() = default;

  /// The latest campaign data, or null before the first. Looking brings the service behind it to life.
  [[nodiscard]] virtual std::shared_ptr<const CampaignData> current() = 0;
};

}  // namespace orlan
