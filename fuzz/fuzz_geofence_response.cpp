// Any bytes as the backend's answer: refused as a whole with a reason, or converted whole.
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/Input.hpp"
#include "orlan/campaigns/CampaignFields.hpp"
#include "orlan/campaigns/CampaignPolygons.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan {
namespace {

void check(std::string_view bytes) {
  const auto response = NewGeofenceResponse::decode(bytes);
  auto conversion = GeofenceConversion::of(bytes);
  // With a byte-order mark in front it is read in one piece.
  const auto whole = GeofenceConversion::of("\xEF\xBB\xBF" + std::string(bytes));
  fuzz::require(conversion.has_value() == whole.has_value(), "by elements or in one piece");
  if (!conversion) {
    fuzz::require(!conversion.error().description.empty(), "a refusal has a reason");
    return;
  }
  fuzz::require(
      conversion->data == whole->data && conversion->report.badVertices == whole->report.badVertices,
      "the same by elements as in one piece");

  const std::size_t geofenced = response->geoCampaign.size();
  const std::size_t campaigns = geofenced + response->pushCampaign.size();
  auto data = std::make_shared<CampaignData>(std::move(conversion->data));
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
