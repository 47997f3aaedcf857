// Any bytes as the backend's answer: refused as a whole with a reason, or converted whole.
#include <memory>
#include <string_view>

#include "bench/MuteLog.hpp"
#include "fuzz/Input.hpp"
#include "orlan/campaigns/CampaignFields.hpp"
#include "orlan/campaigns/CampaignPolygons.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan {
namespace {

void check(std::string_view bytes) {
  static bench::MuteLog log;
  auto response = NewGeofenceResponse::decode(bytes);
  if (!response) return fuzz::require(!response.error().description.empty(), "a refusal has a reason");

  const std::size_t geofenced = response->geoCampaign.size();
  const std::size_t campaigns = geofenced + response->pushCampaign.size();
  auto data = std::make_shared<CampaignData>(convert(std::move(*response), log.logger()));
  log.drain();
  fuzz::require(data->campaignsArray.size() == campaigns, "every campaign is kept");
  fuzz::require(campaignPolygons(data).size() <= campaigns, "at most one polygon a campaign");

  for (std::size_t i = 0; i < campaigns; ++i) {
    auto& campaign = data->campaignsArray[i];
    for (const auto& notification : campaign.outsideNotificationsArray) {
      fuzz::require(notification.questions.has_value(), "questions are there");
      fuzz::require(i < geofenced || notification.activation == "PUSH", "what is pushed says so");
    }
    campaign.location.geofence.clear();  // vertices are written in another form than they are read
  }
  const auto again = json::decodeText<CampaignData>(json::encodeText(*data).value_or(""));
  fuzz::require(again && *again == *data, "campaign data survives its JSON form");
}

}  // namespace
}  // namespace orlan

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orlan::check({reinterpret_cast<const char*>(data), size});
  return 0;
}
