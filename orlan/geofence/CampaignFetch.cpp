#include "orlan/geofence/CampaignFetch.hpp"

#include <utility>

#include "orlan/backend/RequestLayer.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan {

void CampaignFetch::send(HttpRequest request, Done done) {
  running_ = http_.send(std::move(request), [this, alive = lifetime_.token(),
                                             done = std::move(done)](const Result<HttpReply>& answer) {
    main_.async([alive, done, campaigns = digest(answer)] {
      if (alive) done(campaigns);
    });
  });
}

Result<CampaignFetch::Campaigns> CampaignFetch::digest(const Result<HttpReply>& answer) const {
  if (!answer) return Unexpected(answer.error());
  if (!answer->status || !isSuccess(*answer->status)) return Unexpected(urlErrors::badServerResponse());
  const std::string_view body = answer->body ? std::string_view(*answer->body) : std::string_view();
  auto campaigns = decoded(body);
  if (campaigns) (void)files_.writeAtomically(cachedURL_, body);
  return campaigns;
}

CampaignFetch::Campaigns CampaignFetch::cached() const {
  const auto bytes = files_.read(cachedURL_);
  if (!bytes) return nullptr;
  const auto campaigns = decoded(*bytes);
  return campaigns ? *campaigns : nullptr;
}

Result<CampaignFetch::Campaigns> CampaignFetch::decoded(std::string_view body) const {
  auto response = NewGeofenceResponse::decode(body);
  if (!response) return Unexpected(response.error());
  return Campaigns(std::make_shared<const CampaignData>(convert(std::move(response).value(), logger_)));
}

}  // namespace orlan
