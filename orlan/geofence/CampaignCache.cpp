#include "orlan/geofence/CampaignCache.hpp"

#include <utility>

namespace orlan {

void CampaignCache::preload() {
  if (!files_.exists(path())) return;
  queue_ = queues_.make("com.orlan.campaigns");
  queue_->async([this] { preloaded_ = read(); });
}

std::shared_ptr<const CampaignAnswer> CampaignCache::take() {
  queue_.reset();  // which does what it was asked for, but on a simulated phone: there it may be still to do
  if (!preloaded_ || !files_.exists(path())) preloaded_ = read();
  return std::exchange(preloaded_, nullptr);
}

void CampaignCache::keep(std::string_view body) {
  (void)files_.writeAtomically(path(), body);
}

std::shared_ptr<const CampaignAnswer> CampaignCache::read() const {
  const auto body = files_.read(path());
  if (!body) return nullptr;
  const auto answer = CampaignAnswer::of(*body);
  return answer ? *answer : nullptr;
}

}  // namespace orlan
