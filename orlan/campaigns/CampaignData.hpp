#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/platform/Polygon.hpp"

/// What the backend says about campaigns, in the form that everything above works on: plain values, which a
/// host may make, change and read as well. `CampaignFields.hpp` has the JSON form of each record.
namespace orlan {

template <class R>
struct Fields;

/// One vertex of a campaign's polygon; never changes.
class GeofencePoint {
 public:
  GeofencePoint() = default;
  GeofencePoint(std::int64_t position, double latitude, double longitude)
      : position_(position), latitude_(latitude), longitude_(longitude) {}

  /// The vertex's ordinal as sent; nothing is ordered by it.
  [[nodiscard]] std::int64_t position() const { return position_; }

  /// Degrees; any double, also one that is not finite.
  [[nodiscard]] double latitude() const { return latitude_; }
  [[nodiscard]] double longitude() const { return longitude_; }

  friend bool operator==(const GeofencePoint&, const GeofencePoint&) = default;

 private:
  friend struct Fields<GeofencePoint>;
  std::int64_t position_ = 0;
  double latitude_ = 0.0;
  double longitude_ = 0.0;
};

/// All campaigns around a place.
struct CampaignData {
  /// A picture or film of a notification.
  struct MediaDetail {
    std::string type;  // such as "image"
    std::string url;
    std::string _id;  // the backend's document id

    friend bool operator==(const MediaDetail&, const MediaDetail&) = default;
  };

  /// A button of a notification ("call to action").
  struct CTADetail {
    std::optional<std::string> url;  // where it leads
    std::string label;
    std::string _id;

    friend bool operator==(const CTADetail&, const CTADetail&) = default;
  };

  /// One answer that a question offers. What comes from the backend has all three.
  struct Choice {
    std::optional<std::int64_t> id;
    std::optional<std::string> name;
    std::optional<std::int64_t> position;  // order of display

    friend bool operator==(const Choice&, const Choice&) = default;
  };

  /// One question of the survey that comes with a notification.
  struct Question {
    std::int64_t id = 0;
    std::string name;  // the question itself
    std::string type;  // such as "SINGLE_CHOICE"
    std::int64_t position = 0;
    std::optional<std::vector<Choice>> choices;

    friend bool operator==(const Question&, const Question&) = default;
  };

  /// What a person gets to see where the campaign is, and when: `activation` is "ON_ENTER", "ON_EXIT" or, of
  /// a campaign to be pushed, "PUSH".
  struct Notification {
    std::int64_t id = 0;
    std::vector<std::int64_t> campaignId;  // of all the campaigns that it belongs to
    std::string headline;
    std::string body;
    std::string type;
    std::vector<MediaDetail> media;
    std::optional<std::vector<Question>> questions;
    std::vector<CTADetail> cta;
    std::string segmentationTags;
    std::string testIds;
    std::string start;  // validity as sent, not interpreted here
    std::string end;
    std::string activation;
    std::string _id;  // empty when the backend sent none

    friend bool operator==(const Notification&, const Notification&) = default;
  };

  /// One campaign: its name, its area, and what it has to say there.
  struct Campaign {
    struct CampaignDetails {
      std::string campaignName;
      std::int64_t campaignId = 0;

      friend bool operator==(const CampaignDetails&, const CampaignDetails&) = default;
    };

    /// The one area that a campaign is bound to.
    struct Location {
      std::int64_t locationId = 0;          // 0: the campaign has no location
      std::vector<GeofencePoint> geofence;  // ring in the backend's order, not closed; may be empty

      friend bool operator==(const Location&, const Location&) = default;
    };

    CampaignDetails campaign;
    Location location;
    std::vector<Notification> outsideNotificationsArray;  // in the backend's order

    friend bool operator==(const Campaign&, const Campaign&) = default;
  };

  std::vector<Campaign> campaignsArray;  // geofenced campaigns first, then those to be pushed

  friend bool operator==(const CampaignData&, const CampaignData&) = default;
};

/// A campaign as an immutable value: copies share it. Never empty.
class SharedCampaign {
 public:
  SharedCampaign(CampaignData::Campaign campaign)  // NOLINT implicit: still just a campaign
      : campaign_(std::make_shared<const CampaignData::Campaign>(std::move(campaign))) {}

  /// A campaign inside larger data, which is kept alive with it.
  SharedCampaign(std::shared_ptr<const CampaignData> data, const CampaignData::Campaign& campaign)
      : campaign_(std::move(data), &campaign) {}

  const CampaignData::Campaign& operator*() const { return *campaign_; }
  const CampaignData::Campaign* operator->() const { return campaign_.get(); }

  friend bool operator==(const SharedCampaign& a, const SharedCampaign& b) {
    return a.campaign_ == b.campaign_ || *a == *b;
  }

 private:
  std::shared_ptr<const CampaignData::Campaign> campaign_;
};

/// A polygon and the campaign it belongs to: what the monitors watch. Cheap to copy.
struct CampaignPolygon {
  Polygon polygon;
  SharedCampaign campaign;

  friend bool operator==(const CampaignPolygon&, const CampaignPolygon&) = default;
};

}  // namespace orlan

/// Equal points hash alike: -0.0 as 0.0.
template <>
struct std::hash<orlan::GeofencePoint> {
  std::size_t operator()(const orlan::GeofencePoint& point) const noexcept;
};
