#include "orlan/geofence/CampaignFetch.hpp"

#include <utility>

#include "orlan/backend/RequestLayer.hpp"

namespace orlan {

void CampaignFetch::send(HttpRequest request, Done done) {
  running_ = http_.send(std::move(request), [this, alive = lifetime_.token(),
                                             done = std::move(done)](const Result<HttpReply>& reply) {
    main_.async([alive, done, answer = digest(reply)] {
      if (alive) done(answer);
    });
  });
}

Result<CampaignFetch::Answer> CampaignFetch::digest(const Result<HttpReply>& reply) {
  if (!reply) return Unexpected(reply.error());
  if (!reply->status || !isSuccess(*reply->status)) return Unexpected(urlErrors::badServerResponse());
  const std::string_view body = reply->body ? std::string_view(*reply->body) : std::string_view();
  if (!last_ || !last_->isOf(body)) {
    const auto made = CampaignAnswer::of(body);
    if (!made) return Unexpected(made.error());
    last_ = *made;
  }
  last_->report().tell(logger_);
  cache_.keep(body);
  return last_;
}

CampaignFetch::Answer CampaignFetch::cached() {
  last_ = cache_.take();
  if (last_) last_->report().tell(logger_);
  return last_;
}

}  // namespace orlan
