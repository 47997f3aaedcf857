#include "orlan/campaigns/GeofenceResponse.hpp"

#include <iterator>
#include <utility>

#include "orlan/base/text.hpp"
#include "orlan/campaigns/GeofenceResponseFields.hpp"
#include "orlan/logging/Logger.hpp"

namespace orlan {

namespace {

constexpr std::string_view pushActivation = "PUSH";

/// Each element by `one`, in order.
template <class From, class One>
auto mapped(std::vector<From>&& from, One one) {
  std::vector<decltype(one(std::move(from.front())))> to;
  to.reserve(from.size());
  for (From& element : from) to.push_back(one(std::move(element)));
  return to;
}

CampaignData::Choice choiceFrom(NewChoice&& choice) {
  return {choice.id, std::move(choice.choice), choice.position};
}

CampaignData::Question questionFrom(NewQuestion&& question) {
  return {question.id, std::move(question.question), std::move(question.questionType), question.position,
          mapped(std::move(question.choices), choiceFrom)};
}

CampaignData::MediaDetail mediaFrom(NewMedia&& media) {
  return {std::move(media.type), std::move(media.url), std::move(media._id)};
}

CampaignData::CTADetail ctaFrom(NewCTA&& cta) {
  return {std::move(cta.url), std::move(cta.label), std::move(cta._id)};
}

CampaignData::Notification notificationFrom(NewNotification&& from) {
  return {from.id,
          std::move(from.campaignId),
          std::move(from.headline),
          std::move(from.body),
          std::move(from.type),
          mapped(std::move(from.media), mediaFrom),
          mapped(std::move(from.questions), questionFrom),
          mapped(std::move(from.cta), ctaFrom),
          std::move(from.segmentationTags),
          std::move(from.testIds),
          std::move(from.start),
          std::move(from.end),
          std::move(from.activation),
          std::move(from._id).value_or("")};
}

std::string badVertex(const NewGeofencePoint& vertex) {
  std::string line = "⚠️ Bad lat/lon \"";
  return line.append(vertex.latitude).append(",").append(vertex.longitude).append("\"");
}

std::vector<GeofencePoint> ringFrom(const std::vector<NewGeofencePoint>& vertices, Logger& logger) {
  std::vector<GeofencePoint> ring;
  ring.reserve(vertices.size());
  for (const NewGeofencePoint& vertex : vertices) {
    const auto latitude = text::toDouble(vertex.latitude);
    const auto longitude = latitude ? text::toDouble(vertex.longitude) : std::nullopt;
    if (longitude) {
      ring.push_back({vertex.position, *latitude, *longitude});
    } else {
      logger.error(badVertex(vertex));
    }
  }
  return ring;
}

CampaignData::Campaign::Location locationFrom(const CampaignWrapper& wrapper, Logger& logger) {
  if (const auto& location = wrapper.locationsArray) {
    return {location->locationId, ringFrom(location->geofence, logger)};
  }
  return {wrapper.locations.empty() ? 0 : wrapper.locations.front(), {}};
}

CampaignData::Campaign campaignFrom(CampaignWrapper&& wrapper, Logger& logger) {
  return {{std::move(wrapper.campaignName), wrapper.campaignId},
          locationFrom(wrapper, logger),
          mapped(std::move(wrapper.notificationsArray), notificationFrom)};
}

}  // namespace

bool DiscardedText::Codec::decode(json::Node node, DiscardedText&, json::Failure& failure) {
  return node.string().has_value() || failure.expected("a string", node);
}

Result<NewGeofenceResponse> NewGeofenceResponse::decode(std::string_view bytes) {
  auto parsed = json::Document::parse(bytes);
  if (!parsed) return Unexpected(parsed.error());
  NewGeofenceResponse response;
  response.document = std::make_shared<const json::Document>(std::move(*parsed));
  json::Failure failure;
  if (!json::decode(response.document->root(), response, failure)) return Unexpected(failure.error());
  return response;
}

CampaignData convert(NewGeofenceResponse response, Logger& logger) {
  CampaignData data;
  data.campaignsArray.reserve(response.geoCampaign.size() + response.pushCampaign.size());
  for (CampaignWrapper& wrapper : response.geoCampaign) {
    data.campaignsArray.push_back(campaignFrom(std::move(wrapper), logger));
  }
  for (CampaignWrapper& wrapper : response.pushCampaign) {
    auto& campaign = data.campaignsArray.emplace_back(campaignFrom(std::move(wrapper), logger));
    for (auto& notification : campaign.outsideNotificationsArray) notification.activation = pushActivation;
  }
  logger.log("✅ Conversion complete – " + std::to_string(response.geoCampaign.size()) + " GEO + " +
             std::to_string(response.pushCampaign.size()) + " PUSH campaign(s)");
  return data;
}

}  // namespace orlan
