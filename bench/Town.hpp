#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/platform/Location.hpp"

namespace orlan::bench {

/// A town of campaign areas, the same in every run: `count` areas of about a hundred vertices and a few
/// hundred metres across, scattered so that any place lies in about one of them, however many there are.
class Town {
 public:
  explicit Town(std::size_t count, std::size_t vertices = 100)
      : size_(0.01 * std::sqrt(static_cast<double>(count))) {
    for (std::size_t i = 0; i < count; ++i) areas.push_back(area(vertices, 1.0));
  }

  /// A city on less ground, so that any place lies in three or four areas; one in a hundred is a district,
  /// four times as wide as the others.
  static Town denseCity(std::size_t count) {
    Town city(0);
    city.size_ = 0.0058 * std::sqrt(static_cast<double>(count));
    for (std::size_t i = 0; i < count; ++i) city.areas.push_back(city.area(100, i % 100 == 0 ? 4.0 : 1.0));
    return city;
  }

  std::vector<std::vector<Coordinate>> areas;

  /// Places all over the town.
  [[nodiscard]] std::vector<Coordinate> walk(std::size_t count = 1024) {
    std::vector<Coordinate> places;
    for (std::size_t i = 0; i < count; ++i) places.push_back(place());
    return places;
  }

  [[nodiscard]] std::vector<CampaignPolygon> polygons() const {
    std::vector<CampaignPolygon> result;
    for (std::size_t i = 0; i < areas.size(); ++i) {
      const auto id = static_cast<std::int64_t>(1000 + i);
      result.push_back({Polygon(areas[i]), CampaignData::Campaign{{"Area", id}, {id, {}}, {}}});
    }
    return result;
  }

 private:
  double unit() { return static_cast<double>(random_() >> 11) * 0x1p-53; }

  Coordinate place() { return {51.0 + size_ * unit(), -1.3 + 1.6 * size_ * unit()}; }

  std::vector<Coordinate> area(std::size_t vertices, double width) {
    const Coordinate centre = place();
    const double radius = width * (0.003 + 0.005 * unit());
    std::vector<Coordinate> ring;
    for (std::size_t i = 0; i < vertices; ++i) {
      const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(vertices);
      const double here = radius * (0.7 + 0.3 * unit());
      ring.push_back(
          {centre.latitude + here * std::sin(angle), centre.longitude + 1.6 * here * std::cos(angle)});
    }
    return ring;
  }

  double size_;  // degrees of latitude
  std::mt19937_64 random_{42};
};

/// An answer of the backend about a town, its campaigns numbered from one after `id` on.
inline std::string answerFor(const Town& town, std::size_t id = 1000) {
  std::string text = R"({"geoCampaign":[)";
  for (const auto& area : town.areas) {
    const std::string number = std::to_string(++id);
    if (text.back() == '}') text += ',';
    text += R"({"campaignName":"Area )" + number + R"(","campaignId":)" + number +
            R"(,"type":"GEO","locations":[)" + number +
            R"(],"active":"true","testIds":"","segmentationTags":"","_id":"65f0c0ffee65f0c0ffee65f0",)" +
            R"("locationsArray":{"locationId":)" + number +
            R"(,"_id":"65f0c0ffee65f0c0ffee65f1","geofence":[)";
    std::size_t position = 0;
    for (const Coordinate& vertex : area) {
      if (position > 0) text += ',';
      text += R"({"position":)" + std::to_string(position++) + R"(,"latitude":")" +
              text::fromDouble(vertex.latitude) + R"(","longitude":")" + text::fromDouble(vertex.longitude) +
              R"(","_id":"65f0c0ffee65f0c0ffee65f2"})";
    }
    text += R"(]},"notificationsArray":[)";
    for (const char* activation : {"ON_ENTER", "ON_EXIT"}) {
      if (text.back() == '}') text += ',';
      text +=
          R"({"id":)" + number + R"(1,"campaignId":[)" + number +
          R"(],"headline":"Good morning","body":"A coffee on the house, two streets from here.","type":"INFO",)" +
          R"("media":[{"type":"image","url":"https://media.example/1.png","_id":"65f0c0ffee65f0c0ffee65f3"}],)" +
          R"("questions":[{"id":1,"question":"Milk?","question_type":"SINGLE_CHOICE","has_choices":true,)" +
          R"("position":1,"choices":[{"id":1,"position":1,"choice":"Yes"},{"id":2,"position":2,"choice":"No"}]}],)" +
          R"("cta":[{"url":"https://shop.example","label":"Order","_id":"65f0c0ffee65f0c0ffee65f4"}],)" +
          R"("segmentationTags":"","testIds":"","start":"2026-01-01","end":"2026-12-31","activation":")" +
          activation + R"(","_id":"65f0c0ffee65f0c0ffee65f5","published":true})";
    }
    text += "]}";
  }
  return text + R"(],"pushCampaign":[]})";
}

}  // namespace orlan::bench
