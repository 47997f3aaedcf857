#pragma once

#include <cstdint>
#include <optional>

#include "orlan/campaigns/CampaignSource.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/notifications/questions.hpp"

namespace orlan {

/// Finds a notification's survey questions: in its payload, as text or as a list, else in the campaigns of
/// the moment. Says every step in the log. Main thread.
class QuestionLookup {
 public:
  QuestionLookup(Logger& logger, CampaignSource& campaigns) : logger_(logger), campaigns_(campaigns) {}

  /// Questions that the payload carries may be an empty list; from the campaigns there are some or none. The
  /// campaigns are only looked at when the payload has nothing usable.
  [[nodiscard]] std::optional<questions::List> find(const json::Object& userInfo, std::int64_t notifID);

 private:
  [[nodiscard]] std::optional<questions::List> inPayload(const json::Object& userInfo);
  [[nodiscard]] std::optional<questions::List> inText(std::string_view text);
  [[nodiscard]] std::optional<questions::List> inList(const json::Array& list);
  [[nodiscard]] std::optional<questions::List> inCampaigns(std::int64_t notifID);

  Logger& logger_;
  CampaignSource& campaigns_;
};

}  // namespace orlan
