#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/surveys/Survey.hpp"

/// Survey questions in the forms in which they reach a notification. Pure; bad input is refused as a whole.
namespace orlan::questions {

using List = std::vector<SurveyQuestion>;

/// A JSON array of questions.
[[nodiscard]] Result<List> fromText(std::string_view text);

/// Null pointer unless `value` is an array wholly made of dictionaries, the empty one included.
[[nodiscard]] const json::Array* listOfDictionaries(const json::Value& value);

/// The same array, already taken apart.
[[nodiscard]] Result<List> fromList(const json::Array& list);

/// The questions of a campaign's notification. A type that is unknown there becomes none.
[[nodiscard]] List fromCampaign(const std::vector<CampaignData::Question>& questions);

/// The first notification with that identifier, campaign by campaign; null pointers when there is none.
struct Found {
  const CampaignData::Campaign* campaign = nullptr;
  const CampaignData::Notification* notification = nullptr;
};
[[nodiscard]] Found find(const CampaignData& data, std::int64_t notifID);

}  // namespace orlan::questions
