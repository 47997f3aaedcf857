#pragma once

#include "orlan/base/Fields.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

/// The JSON form of the backend's answer; read only.
namespace orlan {

template <>
struct Fields<NewGeofencePoint> {
  using R = NewGeofencePoint;
  static constexpr std::tuple list{field("position", &R::position), field("latitude", &R::latitude),
                                   field("longitude", &R::longitude),
                                   field("_id", &R::_id, DiscardedText::Codec{})};
};

template <>
struct Fields<LocationArray> {
  using R = LocationArray;
  static constexpr std::tuple list{field("locationId", &R::locationId), field("geofence", &R::geofence),
                                   field("_id", &R::_id, DiscardedText::Codec{})};
};

template <>
struct Fields<NewMedia> {
  using R = NewMedia;
  static constexpr std::tuple list{field("type", &R::type), field("url", &R::url), field("_id", &R::_id)};
};

template <>
struct Fields<NewCTA> {
  using R = NewCTA;
  static constexpr std::tuple list{field("url", &R::url), field("label", &R::label), field("_id", &R::_id)};
};

template <>
struct Fields<NewChoice> {
  using R = NewChoice;
  static constexpr std::tuple list{field("id", &R::id), field("position", &R::position),
                                   field("choice", &R::choice)};
};

template <>
struct Fields<NewQuestion> {
  using R = NewQuestion;
  static constexpr std::tuple list{field("id", &R::id),
                                   field("question", &R::question),
                                   field("question_type", &R::questionType),
                                   field("has_choices", &R::hasChoices),
                                   field("position", &R::position),
                                   field("choices", &R::choices)};
};

template <>
struct Fields<NewNotification> {
  using R = NewNotification;
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
                                   field("postMessage", &R::postMessage),
                                   field("start", &R::start),
                                   field("end", &R::end),
                                   field("activation", &R::activation),
                                   field("_id", &R::_id),
                                   field("published", &R::published)};
};

template <>
struct Fields<CampaignWrapper> {
  using R = CampaignWrapper;
  static constexpr std::tuple list{field("campaignName", &R::campaignName),
                                   field("campaignId", &R::campaignId),
                                   field("type", &R::type),
                                   field("locations", &R::locations),
                                   field("active", &R::active),
                                   field("testIds", &R::testIds),
                                   field("locationsArray", &R::locationsArray),
                                   field("notificationsArray", &R::notificationsArray),
                                   field("_id", &R::_id),
                                   field("segmentationTags", &R::segmentationTags)};
};

template <>
struct Fields<NewGeofenceResponse> {
  using R = NewGeofenceResponse;
  static constexpr std::tuple list{field("geoCampaign", &R::geoCampaign),
                                   field("pushCampaign", &R::pushCampaign)};
};

}  // namespace orlan
