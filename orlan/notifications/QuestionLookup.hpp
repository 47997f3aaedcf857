#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "orlan/base/json.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/campaigns/CampaignSource.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan {

/// Finds a notification's survey questions: in its payload, as text or as a list, else in the campaigns of
/// the moment. Says every step in the log. A list of which one does not decode is refused as a whole. Main
/// thread.
class QuestionLookup {
 public:
  using Questions = std::optional<std::vector<SurveyQuestion>>;

  QuestionLookup(Logger& logger, CampaignSource& campaigns) : logger_(logger), campaigns_(campaigns) {}

  /// Questions that the payload carries may be an empty list; from the campaigns there are some or none. The
  /// campaigns are only looked at when the payload has nothing usable.
  [[nodiscard]] Questions find(const json::Object& userInfo, std::int64_t notifID);

 private:
  [[nodiscard]] Questions inPayload(const json::Object& userInfo);
  [[nodiscard]] Questions inText(std::string_view text);
  [[nodiscard]] Questions inList(const json::Array& list);
  [[nodiscard]] Questions inCampaigns(std::int64_t notifID);
  [[nodiscard]] Questions of(const CampaignData::Campaign& campaign,
                             const CampaignData::Notification& notification);

  Logger& logger_;
  CampaignSource& campaigns_;
};

}  // namespace orlan
