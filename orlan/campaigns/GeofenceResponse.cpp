#include "orlan/campaigns/GeofenceResponse.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "orlan/base/elements.hpp"
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

using Lines = std::vector<std::string>;

std::vector<GeofencePoint> ringFrom(const std::vector<NewGeofencePoint>& vertices, Lines& badVertices) {
  std::vector<GeofencePoint> ring;
  ring.reserve(vertices.size());
  for (const NewGeofencePoint& vertex : vertices) {
    const auto latitude = text::toDouble(vertex.latitude);
    const auto longitude = latitude ? text::toDouble(vertex.longitude) : std::nullopt;
    if (longitude) {
      ring.push_back({vertex.position, *latitude, *longitude});
    } else {
      badVertices.push_back(badVertex(vertex));
    }
  }
  return ring;
}

CampaignData::Campaign::Location locationFrom(const CampaignWrapper& wrapper, Lines& badVertices) {
  if (const auto& location = wrapper.locationsArray) {
    return {location->locationId, ringFrom(location->geofence, badVertices)};
  }
  return {wrapper.locations.empty() ? 0 : wrapper.locations.front(), {}};
}

CampaignData::Campaign campaignFrom(CampaignWrapper&& wrapper, Lines& badVertices) {
  return {{std::move(wrapper.campaignName), wrapper.campaignId},
          locationFrom(wrapper, badVertices),
          mapped(std::move(wrapper.notificationsArray), notificationFrom)};
}

/// The campaigns of one of the two lists.
struct Converted {
  std::vector<CampaignData::Campaign> campaigns;
  Lines badVertices;

  void add(CampaignWrapper&& wrapper) { campaigns.push_back(campaignFrom(std::move(wrapper), badVertices)); }
};

GeofenceConversion together(Converted&& geo, Converted&& push) {
  for (auto& campaign : push.campaigns) {
    for (auto& notification : campaign.outsideNotificationsArray) notification.activation = pushActivation;
  }
  std::string summary = "✅ Conversion complete – " + std::to_string(geo.campaigns.size()) + " GEO + " +
                        std::to_string(push.campaigns.size()) + " PUSH campaign(s)";
  std::move(push.campaigns.begin(), push.campaigns.end(), std::back_inserter(geo.campaigns));
  std::move(push.badVertices.begin(), push.badVertices.end(), std::back_inserter(geo.badVertices));
  return {{std::move(geo.campaigns)}, {std::move(geo.badVertices), std::move(summary)}};
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

Result<GeofenceConversion> GeofenceConversion::of(std::string_view bytes) {
  static constexpr std::array<std::string_view, 2> lists{"geoCampaign", "pushCampaign"};
  std::array<Converted, 2> converted;
  const auto take = [&](std::size_t list, json::Node element) {
    CampaignWrapper wrapper;
    json::Failure failure;
    if (!json::decode(element, wrapper, failure)) return false;
    converted[list].add(std::move(wrapper));
    return true;
  };
  if (!json::eachElement(bytes, lists, take)) {
    auto response = NewGeofenceResponse::decode(bytes);
    if (!response) return Unexpected(response.error());
    converted = {};
    for (CampaignWrapper& wrapper : response->geoCampaign) converted[0].add(std::move(wrapper));
    for (CampaignWrapper& wrapper : response->pushCampaign) converted[1].add(std::move(wrapper));
  }
  return together(std::move(converted[0]), std::move(converted[1]));
}

void GeofenceConversion::Report::tell(Logger& logger) const {
  for (const std::string& line : badVertices) logger.error(line);
  logger.log(summary);
}

}  // namespace orlan
