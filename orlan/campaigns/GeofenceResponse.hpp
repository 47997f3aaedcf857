#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/base/Fields.hpp"
#include "orlan/campaigns/CampaignData.hpp"

/// The backend's answer about the campaigns around a place, as it is on the wire, and its conversion.
namespace orlan {

class Logger;

/// A text that has to be there but that nobody reads: checked, not kept. There is one in every vertex.
struct DiscardedText {
  struct Codec {
    static bool decode(json::Node node, DiscardedText& text, json::Failure& failure);
  };
};

struct NewGeofencePoint {
  std::int64_t position = 0;
  std::string_view latitude;  // decimal degrees as text, inside the response's document
  std::string_view longitude;
  DiscardedText _id;
};

/// One location, whatever its name says.
struct LocationArray {
  std::int64_t locationId = 0;
  std::vector<NewGeofencePoint> geofence;  // in ring order
  DiscardedText _id;
};

struct NewMedia {
  std::string type;
  std::string url;
  std::string _id;
};

struct NewCTA {
  std::string url;
  std::string label;
  std::string _id;
};

struct NewChoice {
  std::int64_t id = 0;
  std::int64_t position = 0;
  std::string choice;
};

struct NewQuestion {
  std::int64_t id = 0;
  std::string question;
  std::string questionType;
  bool hasChoices = false;
  std::int64_t position = 0;
  std::vector<NewChoice> choices;
};

struct NewNotification {
  std::int64_t id = 0;
  std::vector<std::int64_t> campaignId;
  std::string headline;
  std::string body;
  std::string type;
  std::vector<NewMedia> media;
  std::vector<NewQuestion> questions;
  std::vector<NewCTA> cta;
  std::string segmentationTags;
  std::string testIds;
  std::optional<std::string> postMessage;
  std::string start;
  std::string end;
  std::string activation;
  std::optional<std::string> _id;
  std::optional<bool> published;
};

struct CampaignWrapper {
  std::string campaignName;
  std::int64_t campaignId = 0;
  std::string type;
  std::vector<std::int64_t> locations;
  std::string active;
  std::string testIds;
  std::optional<LocationArray> locationsArray;
  std::vector<NewNotification> notificationsArray;
  std::optional<std::string> _id;
  std::string segmentationTags;
};

struct NewGeofenceResponse {
  std::vector<CampaignWrapper> geoCampaign;
  std::vector<CampaignWrapper> pushCampaign;
  std::shared_ptr<const json::Document> document;  // keeps the vertices' texts; there are two in every vertex

  /// From the bytes of an answer. One missing or wrong member anywhere fails the whole; the error names it.
  [[nodiscard]] static Result<NewGeofenceResponse> decode(std::string_view bytes);
};

/// What an answer comes to: every campaign and notification, the geofenced ones first; those to be pushed get
/// the activation "PUSH". Vertices whose coordinates are no numbers are dropped.
struct GeofenceConversion {
  /// What a conversion has to say, each time that its answer comes.
  struct Report {
    std::vector<std::string> badVertices;  // an error each
    std::string summary;

    void tell(Logger& logger) const;
  };

  CampaignData data;
  Report report;

  /// From the bytes of an answer, with the errors of `NewGeofenceResponse::decode`. Needs little more memory
  /// than what it returns. Any thread.
  [[nodiscard]] static Result<GeofenceConversion> of(std::string_view bytes);
};

}  // namespace orlan
