#include "orlan/geofence/CampaignFetch.hpp"

#include <utility>

#include "orlan/backend/RequestLayer.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan {

void CampaignFetch::send(HttpRequest request, Done done) {
  running_ = {};
  round_ = std::make_unique<Lifetime>();
  running_ = http_.send(std::move(request), [this, alive = round_->token(),
                                             done = std::move(done)](const Result<HttpReply>& answer) {
    main_.async([alive, done, campaigns = digest(answer)] {
      if (alive) done(campaigns);
    });
  });
}

Result<CampaignFetch::Campaigns> CampaignFetch::digest(const Result<HttpReply>& answer) {
  if (!answer) return Unexpected(answer.error());
  if (!answer->status || !isSuccess(*answer->status)) return Unexpected(urlErrors::badServerResponse());
  const std::string_view body = answer->body ? std::string_view(*answer->body) : std::string_view();
  auto response = NewGeofenceResponse::decode(body);
  if (!response) return Unexpected(response.error());
  auto campaigns = std::make_shared<const CampaignData>(convert(std::move(response).value(), logger_));
  cache_.write(body);
  return Campaigns(std::move(campaigns));
}

}  // namespace orlan
