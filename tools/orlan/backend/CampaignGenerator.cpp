#include "tools/orlan/backend/CampaignGenerator.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/CampaignThemes.hpp"

namespace orlan::devbackend {
namespace {

constexpr double rowHeight = 0.004;  // degrees of latitude, about 445 m
constexpr double filled = 0.8;       // how much of its cell a campaign's shape takes up, in each direction
constexpr char validFrom[] = "2025-01-01 00:00:00";
constexpr char validUntil[] = "2035-01-01 00:00:00";

double latitudeOf(std::int64_t row) {
  return (static_cast<double>(row) + 0.5) * rowHeight - 90.0;
}

/// Degrees of longitude; bounded near the poles, where a column would become the whole circle.
double columnWidth(std::int64_t row) {
  const double shrink = std::cos(latitudeOf(row) * std::numbers::pi / 180.0);
  return rowHeight / std::max(shrink, 0.01);
}

struct Point {
  double east = 0.0;  // from -1 to 1 across the shape
  double north = 0.0;
};

/// Some spread of 64 bits, the same on every machine.
std::uint64_t mixed(std::uint64_t value) {
  value ^= value >> 30U;
  value *= 0xBF58476D1CE4E5B9ULL;
  value ^= value >> 27U;
  value *= 0x94D049BB133111EBULL;
  return value ^ (value >> 31U);
}

/// A ring around the middle; `rough` from 0 (regular) to 1.
std::vector<Point> ring(int corners, double rough, std::uint64_t seed) {
  std::vector<Point> points;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / corners;
    const double share = static_cast<double>(mixed(seed + static_cast<std::uint64_t>(i)) % 1000) / 1000.0;
    const double radius = 1.0 - rough * share;
    points.push_back({radius * std::cos(angle), radius * std::sin(angle)});
  }
  return points;
}

std::vector<Point> shapeOf(std::size_t theme, std::uint64_t seed) {
  switch (theme % 4) {
    case 0:
      return {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    case 1:
      return ring(6, 0.0, seed);
    case 2:  // an L, so that something is not convex
      return {{-1, -1}, {1, -1}, {1, 0}, {0, 0}, {0, 1}, {-1, 1}};
    default:
      return ring(11, 0.4, seed);
  }
}

json::Value vertices(Cell cell, const std::vector<Point>& shape, std::int64_t locationId) {
  const auto centre = centreOf(cell);
  json::Array list;
  for (const auto& point : shape) {
    const auto index = static_cast<std::int64_t>(list.size());
    const double latitude = centre.latitude + point.north * filled * rowHeight / 2.0;
    const double longitude = centre.longitude + point.east * filled * columnWidth(cell.row) / 2.0;
    list.push_back(json::Object{{"position", index},
                                {"latitude", text::fixed(latitude, 6)},
                                {"longitude", text::fixed(longitude, 6)},
                                {"_id", fmt::format("vertex-{}-{}", locationId, index)}});
  }
  return list;
}

json::Value questions(const Theme& theme, std::int64_t notificationId) {
  json::Array list;
  if (theme.question.empty()) return list;
  json::Array choices;
  for (const auto choice : theme.choices) {
    const auto position = static_cast<std::int64_t>(choices.size());
    choices.push_back(
        json::Object{{"id", notificationId * 10 + position}, {"position", position}, {"choice", choice}});
  }
  const bool hasChoices = !choices.empty();
  list.push_back(json::Object{{"id", notificationId},
                              {"question", theme.question},
                              {"question_type", theme.questionType},
                              {"has_choices", hasChoices},
                              {"position", 0},
                              {"choices", std::move(choices)}});
  return list;
}

struct Words {
  std::string_view headline;
  std::string_view body;
  std::string_view activation;
};

json::Object notification(std::int64_t id, std::int64_t campaignId, const Words& words, const Theme& theme) {
  const bool isExit = words.activation == "ON_EXIT";
  const auto address = fmt::format("https://www.orlan.example/{}", theme.slug);
  json::Array media;
  if (!isExit) {
    media.push_back(
        json::Object{{"type", "image"}, {"url", address + ".jpg"}, {"_id", fmt::format("media-{}", id)}});
  }
  json::Array cta{
      json::Object{{"url", address}, {"label", theme.callToAction}, {"_id", fmt::format("cta-{}", id)}}};
  return json::Object{{"id", id},
                      {"campaignId", json::Array{campaignId}},
                      {"headline", words.headline},
                      {"body", words.body},
                      {"type", "notification"},
                      {"media", std::move(media)},
                      {"questions", isExit ? questions(theme, id) : json::Value(json::Array{})},
                      {"cta", std::move(cta)},
                      {"segmentationTags", ""},
                      {"testIds", ""},
                      {"start", validFrom},
                      {"end", validUntil},
                      {"activation", words.activation},
                      {"_id", fmt::format("notification-{}", id)},
                      {"published", true}};
}

json::Object campaign(std::int64_t id, std::string_view name, std::string_view type,
                      json::Array notifications) {
  return json::Object{{"campaignName", name},
                      {"campaignId", id},
                      {"type", type},
                      {"locations", json::Array{}},
                      {"active", "true"},
                      {"testIds", ""},
                      {"notificationsArray", std::move(notifications)},
                      {"_id", fmt::format("campaign-{}", id)},
                      {"segmentationTags", ""}};
}

json::Value placedCampaign(Cell cell) {
  const auto index = static_cast<std::size_t>((cell.row % 3) * 3 + cell.column % 3);
  const auto& theme = themes()[index];
  const auto id = cell.row * 100'000 + cell.column;
  json::Array notifications{
      notification(id * 10 + 1, id, {theme.enterHeadline, theme.enterBody, "ON_ENTER"}, theme),
      notification(id * 10 + 2, id, {theme.exitHeadline, theme.exitBody, "ON_EXIT"}, theme)};
  auto object = campaign(id, theme.name, "geo", std::move(notifications));
  object.set("locations", json::Array{id});
  object.set("locationsArray",
             json::Object{{"locationId", id},
                          {"geofence", vertices(cell, shapeOf(index, static_cast<std::uint64_t>(id)), id)},
                          {"_id", fmt::format("location-{}", id)}});
  return object;
}

json::Value pushCampaign() {
  constexpr std::int64_t id = 7;
  constexpr Theme theme{.slug = "welcome", .callToAction = "Look around"};
  json::Array notifications{notification(
      71, id, {"Good to have you here", "Nine places around you have something to tell today.", "PUSH"},
      theme)};
  return campaign(id, "Welcome to the neighbourhood", "push", std::move(notifications));
}

bool isOnGlobe(Coordinate position) {
  return std::abs(position.latitude) <= 90.0 && std::abs(position.longitude) <= 180.0;  // not-a-number: no
}

}  // namespace

Cell cellAt(Coordinate position) {
  const auto row = static_cast<std::int64_t>(std::floor((position.latitude + 90.0) / rowHeight));
  return {row, static_cast<std::int64_t>(std::floor((position.longitude + 180.0) / columnWidth(row)))};
}

Coordinate centreOf(Cell cell) {
  return {latitudeOf(cell.row), (static_cast<double>(cell.column) + 0.5) * columnWidth(cell.row) - 180.0};
}

json::Value campaignsAround(std::optional<Coordinate> position, bool push) {
  json::Array geo;
  json::Array pushed;
  if (position && isOnGlobe(*position)) {
    const auto middle = cellAt(*position);
    for (auto row = std::max<std::int64_t>(middle.row - 1, 0); row <= middle.row + 1; ++row) {
      const auto column = cellAt({latitudeOf(row), position->longitude}).column;
      for (auto next = std::max<std::int64_t>(column - 1, 0); next <= column + 1; ++next) {
        geo.push_back(placedCampaign({row, next}));
      }
    }
    if (push) pushed.push_back(pushCampaign());
  }
  return json::Object{{"geoCampaign", std::move(geo)}, {"pushCampaign", std::move(pushed)}};
}

}  // namespace orlan::devbackend
