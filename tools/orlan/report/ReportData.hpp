#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Coordinate.hpp"
#include "orlan/platform/NotificationCenter.hpp"

/// What happened to one device in one run, as plain values: what the report draws and the summary counts.
namespace orlan::report {

struct Area {
  std::int64_t campaignId = 0;
  std::int64_t locationId = 0;
  std::string name;
  std::vector<Coordinate> vertices;
};

struct Fix {
  Duration at{};  // since the beginning of the run
  Coordinate coordinate;
  double accuracy = 0.0;  // metres
};

struct Crossing {
  Duration at{};
  bool entry = true;
  std::string monitor;  // "foreground" or "background"
  std::int64_t campaignId = 0;
  std::int64_t locationId = 0;
  std::string campaign;  // its name
  std::optional<Coordinate> where;
};

struct Notification {
  std::size_t number = 0;  // 1, 2, … in the order of scheduling
  Duration at{};           // when it was shown, or scheduled when it was not
  NotificationRequest request;
  std::string state;  // "scheduled", "presented", "delivered", "refused: …"
  std::optional<Coordinate> where;
  bool tapped = false;
};

struct Request {
  Duration at{};
  std::string method;
  std::string path;
  std::string outcome;  // a status, an error's words, or empty while under way
};

struct Moment {
  Duration at{};
  std::string kind;  // "start", "application", "fetch", "error"
  std::string text;
};

struct Stretch {
  Duration from{};
  Duration to{};
};

struct ReportData {
  std::string title;
  TimePoint begin;                   // wall clock at second 0
  std::chrono::seconds utcOffset{};  // local time of the device
  Duration length{};
  std::vector<Area> areas;  // one for each location of a campaign, see `put`
  std::vector<Circle> circles;
  std::vector<Fix> fixes;
  std::vector<Crossing> crossings;
  std::vector<Notification> notifications;
  std::vector<Request> requests;
  std::vector<Moment> moments;
  std::vector<Stretch> inBackground;  // when the application was

  /// In the place of what is known of the same location of the same campaign.
  void put(Area area) {
    const auto [known, isNew] = places_.try_emplace({area.campaignId, area.locationId}, areas.size());
    if (isNew) areas.emplace_back();
    areas[known->second] = std::move(area);
  }

  /// "09:26:53" local time.
  [[nodiscard]] std::string clockTime(Duration at) const {
    return localTimeOfDay(begin + at, utcOffset).substr(0, 8);
  }

 private:
  std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> places_;  // in areas
};

}  // namespace orlan::report
