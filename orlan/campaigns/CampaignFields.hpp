#pragma once

#include "orlan/base/Fields.hpp"
#include "orlan/campaigns/CampaignData.hpp"

/// The JSON form of the campaign records, for `json::encodeText` and `json::decodeText<CampaignData>`:
/// objects whose keys are the names of the members. Decoding fails, and says where, on a missing member that
/// is not optional and on a wrong type.
namespace orlan {

/// Degrees as the backend sends them: read from a text (0.0 when it is no number), written as a number. So an
/// area that was written does not read back, and one with a coordinate that is not finite is not written.
struct DegreesText {
  static bool decode(json::Node node, double& degrees, json::Failure& failure);
  static json::Value encode(const double& degrees) { return degrees; }
};

template <>
struct Fields<GeofencePoint> {
  using R = GeofencePoint;
  static constexpr std::tuple list{field("position", &R::position_),
                                   field("latitude", &R::latitude_, DegreesText{}),
                                   field("longitude", &R::longitude_, DegreesText{})};
};

template <>
struct Fields<CampaignData::MediaDetail> {
  using R = CampaignData::MediaDetail;
  static constexpr std::tuple list{field("type", &R::type), field("url", &R::url), field("_id", &R::_id)};
};

template <>
struct Fields<CampaignData::CTADetail> {
  using R = CampaignData::CTADetail;
  static constexpr std::tuple list{field("url", &R::url), field("label", &R::label), field("_id", &R::_id)};
};

template <>
struct Fields<CampaignData::Choice> {
  using R = CampaignData::Choice;
  static constexpr std::tuple list{field("id", &R::id), field("name", &R::name),
                                   field("position", &R::position)};
};

template <>
struct Fields<CampaignData::Question> {
  using R = CampaignData::Question;
  static constexpr std::tuple list{field("id", &R::id), field("name", &R::name), field("type", &R::type),
                                   field("position", &R::position), field("choices", &R::choices)};
};

template <>
struct Fields<CampaignData::Notification> {
  using R = CampaignData::Notification;
  static constexpr std::tuple list{field("id", &R::id),
                                   field("campaignId", &R::campaignId),
                                   field("headline", &R::headline),
                                   field("body", &R::body),
                                   field("type", &R::type),
                                   field("media", &R::media),
                                   field("questions", &R::questions),
                                   field("cta", &R::cta),
                                   field("segmentationTags", &R::segmentationTags),
                                   field("testIds", &R::testIds),
                                   field("start", &R::start),
                                   field("end", &R::end),
                                   field("activation", &R::activation),
                                   field("_id", &R::_id)};
};

template <>
struct Fields<CampaignData::Campaign::CampaignDetails> {
  using R = CampaignData::Campaign::CampaignDetails;
  static constexpr std::tuple list{field("campaignName", &R::campaignName),
                                   field("campaignId", &R::campaignId)};
};

template <>
struct Fields<CampaignData::Campaign::Location> {
  using R = CampaignData::Campaign::Location;
  static constexpr std::tuple list{field("locationId", &R::locationId), field("geofence", &R::geofence)};
};

template <>
struct Fields<CampaignData::Campaign> {
  using R = CampaignData::Campaign;
  static constexpr std::tuple list{field("campaign", &R::campaign), field("location", &R::location),
                                   field("outsideNotificationsArray", &R::outsideNotificationsArray)};
};

template <>
struct Fields<CampaignData> {
  using R = CampaignData;
  static constexpr std::tuple list{field("campaignsArray", &R::campaignsArray)};
};

}  // namespace orlan
