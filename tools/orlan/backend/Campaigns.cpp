#include "tools/orlan/backend/Campaigns.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "orlan/base/text.hpp"

namespace orlan::devbackend {

std::string_view campaignTexts();  // campaigns.json

namespace {

constexpr double rowHeight = 0.004;  // degrees of latitude, about 445 m

/// Row 0 begins at the south pole, column 0 at 180 degrees west; columns are narrower in degrees near the
/// equator.
struct Cell {
  std::int64_t row = 0;
  std::int64_t column = 0;
};

double latitudeOf(std::int64_t row) {
  return (static_cast<double>(row) + 0.5) * rowHeight - 90.0;
}

/// Degrees of longitude; bounded near the poles, where a column would become the whole circle.
double columnWidth(std::int64_t row) {
  const double shrink = std::cos(latitudeOf(row) * std::numbers::pi / 180.0);
  return rowHeight / std::max(shrink, 0.01);
}

std::int64_t columnAt(std::int64_t row, double longitude) {
  return static_cast<std::int64_t>(std::floor((longitude + 180.0) / columnWidth(row)));
}

/// A square with a corner bitten off, so that it is not convex.
json::Array shapeOf(Cell cell) {
  constexpr std::array<std::pair<double, double>, 6> corners{
      {{-0.4, -0.4}, {0.4, -0.4}, {0.4, 0.2}, {0.2, 0.2}, {0.2, 0.4}, {-0.4, 0.4}}};
  json::Array list;
  for (const auto& [east, north] : corners) {
    const auto position = static_cast<std::int64_t>(list.size());
    const double longitude = (static_cast<double>(cell.column) + 0.5 + east) * columnWidth(cell.row) - 180.0;
    list.push_back(
        json::Object{{"position", position},
                     {"latitude", text::fixed(latitudeOf(cell.row) + north * rowHeight, 6)},
                     {"longitude", text::fixed(longitude, 6)},
                     {"_id", fmt::format("vertex-{}-{}", cell.row * 100'000 + cell.column, position)}});
  }
  return list;
}

/// `form` with its places filled: "$key" stands for the theme's member, and "#" for `id`, as a number when it
/// leads ("#2": the identifier with a 2 behind it).
json::Value completed(const json::Value& form, const json::Object& theme, const std::string& id) {
  if (const auto* elements = form.array()) {
    json::Array list;
    for (const auto& element : *elements) list.push_back(completed(element, theme, id));
    return list;
  }
  if (const auto* members = form.object()) {
    json::Object object;
    for (const auto& [key, value] : *members) object.set(key, completed(value, theme, id));
    return object;
  }
  const auto* text = form.string();
  if (text == nullptr) return form;
  if (text->starts_with('$')) return completed(*theme.find(text->substr(1)), theme, id);
  const auto mark = text->find('#');
  if (mark == std::string::npos) return form;
  auto whole = text->substr(0, mark) + id + text->substr(mark + 1);
  return mark == 0 ? json::Value(*text::toInteger(whole)) : json::Value(std::move(whole));
}

const json::Object& texts() {
  static const json::Value all = json::parse(campaignTexts()).value();
  return *all.object();
}

json::Value placedCampaign(Cell cell) {
  const auto& themes = *texts().find("themes")->array();
  const auto& theme = themes[static_cast<std::size_t>((cell.row % 3) * 3 + cell.column % 3)];
  const auto id = fmt::format("{}", cell.row * 100'000 + cell.column);
  auto campaign = completed(*texts().find("placed"), *theme.object(), id);
  campaign.object()->find("locationsArray")->object()->set("geofence", shapeOf(cell));
  return campaign;
}

}  // namespace

json::Value campaignsAround(std::optional<Coordinate> position, bool push) {
  json::Array geo;
  json::Array pushed;
  // Not-a-number is nowhere.
  if (position && std::abs(position->latitude) <= 90.0 && std::abs(position->longitude) <= 180.0) {
    const auto middle = static_cast<std::int64_t>(std::floor((position->latitude + 90.0) / rowHeight));
    for (auto row = std::max<std::int64_t>(middle - 1, 0); row <= middle + 1; ++row) {
      const auto column = columnAt(row, position->longitude);
      for (auto next = std::max<std::int64_t>(column - 1, 0); next <= column + 1; ++next) {
        geo.push_back(placedCampaign({row, next}));
      }
    }
    if (push) pushed.push_back(*texts().find("push"));
  }
  return json::Object{{"geoCampaign", std::move(geo)}, {"pushCampaign", std::move(pushed)}};
}

}  // namespace orlan::devbackend
