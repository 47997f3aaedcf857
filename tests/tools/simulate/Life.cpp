#include "tools/simulate/Life.hpp"

#include <fmt/format.h>

#include <random>

#include "orlan/base/text.hpp"

namespace orlan::simulate::life {
namespace {

constexpr int areas = 30;

/// Seconds, and a little more than whole ones, so that nothing falls together with an answer of the backend.
std::string at(std::int64_t second) {
  return fmt::format("{}.007", second);
}

class Author {
 public:
  explicit Author(std::uint64_t seed) : random_(seed) {}

  Life write(int length) {
    life_.beginsInFront = chance(50);
    begin();
    while (static_cast<int>(life_.events.size()) < length) {
      wait();
      happen();
    }
    for (int i = 0; i < 30; ++i) {
      life_.answers.push_back(i == 0 || chance(25) ? Answer(answer()) : std::nullopt);
    }
    life_.answers.emplace_back(answer());
    return life_;
  }

 private:
  std::int64_t below(std::int64_t limit) {
    return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(limit));
  }
  bool chance(int percent) { return below(100) < percent; }
  int anArea() { return static_cast<int>(chance(85) ? below(6) : below(areas)); }
  const char* state() {
    const char* const states[] = {"active", "inactive", "background"};
    return states[below(3)];
  }

  void wait() {
    const std::int64_t exact[] = {300, 599, 600, 601, 899, 900, 901, 1800};
    const auto kind = below(100);
    second_ += 1;
    if (kind < 85) {
      second_ += below(12);
    } else if (kind < 93) {
      second_ += below(900);
    } else {
      second_ += exact[below(8)] - 1;
    }
  }

  void event(std::string members) { life_.events.push_back({second_, std::move(members)}); }

  void begin() {
    event(R"("do": "start", "apiKey": "KEY", "env": "staging")");
    ++second_;
  }

  std::string place() {
    const double north[] = {0.0, 0.0, 0.0, 0.0011, 0.0016, 0.008};  // in, in the circle, beyond, away
    const auto centre = areaOf(anArea()).centre;
    return fmt::format(R"("latitude": {}, "longitude": {}, "accuracy": {})",
                       text::fixed(centre.latitude + north[below(6)], 6), centre.longitude,
                       chance(80) ? 5 : 80);
  }

  std::vector<int> answer() {
    std::vector<int> numbers;
    const int others = chance(4) ? 85 : 3;
    for (int area = 0; area < areas; ++area) {
      if (chance(area < 6 ? 70 : others)) numbers.push_back(area);
    }
    return numbers;
  }

  void happen() {
    const auto kind = below(100);
    if (kind < 30) return event(R"("do": "fix", )" + place());
    if (kind < 35) return event(R"("do": "fix", "fixes": [{)" + place() + "}, {" + place() + "}]");
    if (kind < 50) return event(fmt::format(R"("do": "application", "to": "{}")", state()));
    if (kind < 64) return loneSignal();
    if (kind < 92) {
      return event(fmt::format(R"("do": "{}", "identifier": "{}")", chance(50) ? "enterRegion" : "exitRegion",
                               areaOf(anArea()).identifier()));
    }
    if (kind < 95) {
      event(fmt::format(R"("do": "relaunch", "application": "{}")", state()));
      if (chance(50)) wait();
      ++second_;
      return begin();
    }
    if (kind < 98) {
      return event(
          fmt::format(R"("do": "clearCooldown", "monitor": "{}")", chance(50) ? "foreground" : "background"));
    }
    jumpClock();
  }

  /// By minutes, back or ahead of where it would be had it never jumped.
  void jumpClock() {
    const auto minutes = 60 + second_ / 60 + below(60) - 30;
    event(fmt::format(R"("do": "clock", "to": "2026-01-{:02}T{:02}:{:02}:00Z")", 1 + minutes / 1440,
                      minutes / 60 % 24, minutes % 60));
  }

  void loneSignal() {
    const char* const signals[] = {"didEnterBackground", "willEnterForeground", "didBecomeActive",
                                   "willResignActive"};
    event(fmt::format(R"("do": "application", "signal": "{}")", signals[below(4)]));
  }

  std::mt19937_64 random_;
  std::int64_t second_ = 0;
  Life life_;
};

std::string notification(std::int64_t campaign, bool entering) {
  return fmt::format(
      R"({{"id": {0}, "campaignId": [{1}], "headline": "{2} {1}", "body": "", "type": "text", "media": [], )"
      R"("questions": [], "cta": [], "segmentationTags": "", "testIds": "", "start": "", "end": "", )"
      R"("activation": "{3}"}})",
      2 * campaign + (entering ? 0 : 1), campaign, entering ? "in" : "out",
      entering ? "ON_ENTER" : "on_exit");
}

std::string campaignIn(const Area& area) {
  const auto [lat, lon] = area.centre;
  const Coordinate ring[] = {{lat - halfSide, lon - halfSide},
                             {lat - halfSide, lon + halfSide},
                             {lat + halfSide, lon + halfSide},
                             {lat + halfSide, lon - halfSide}};
  std::string vertices;
  for (const auto& [latitude, longitude] : ring) {
    vertices +=
        fmt::format(R"({}{{"position": 0, "latitude": "{}", "longitude": "{}", "_id": ""}})",
                    vertices.empty() ? "" : ", ", text::fixed(latitude, 6), text::fixed(longitude, 6));
  }
  return fmt::format(
      R"({{"campaignName": "", "campaignId": {0}, "type": "", "locations": [], "active": "", "testIds": "", )"
      R"("segmentationTags": "", "locationsArray": {{"locationId": {1}, "_id": "", "geofence": [{2}]}}, )"
      R"("notificationsArray": [{3}, {4}]}})",
      area.campaign, area.location, vertices, notification(area.campaign, true),
      notification(area.campaign, false));
}

template <class Items, class Form>
std::string lines(const Items& items, Form form) {
  std::string joined;
  for (const auto& item : items) joined += (joined.empty() ? "\n    " : ",\n    ") + form(item);
  return joined;
}

}  // namespace

Area areaOf(int number) {
  const double north = 0.02 * number + 0.0007 * (number * number % 7);  // no two distances alike
  return {number == 4 ? 3 : number, 10 * number, {51.0 + north, -0.12}};
}

Life randomLife(std::uint64_t seed, int length) {
  return Author(seed).write(length);
}

bool isKnown(const Life& life) {
  if (life.answers.empty()) return false;
  bool started = false;
  for (const Event& event : life.events) {
    const bool starts = event.members.starts_with(R"("do": "start")");
    if (starts && started) return false;
    started = starts || (started && !event.members.starts_with(R"("do": "relaunch")"));
  }
  return true;
}

std::string scenarioOf(const Life& life) {
  const auto answers = lines(life.answers, [](const Answer& answer) -> std::string {
    if (!answer) return R"({"error": "unreachable"})";
    return R"({"json": {"geoCampaign": [)" +
           lines(*answer, [](int number) { return campaignIn(areaOf(number)); }) +
           R"(], "pushCampaign": []}})";
  });
  const auto steps = lines(life.events, [](const Event& event) {
    return fmt::format(R"({{"at": {}, {}}})", at(event.second), event.members);
  });
  return fmt::format(R"({{
  "device": {{"application": "{}", "position": {{"latitude": 51.0, "longitude": -0.5}}}},
  "backend": [
    {{"method": "POST", "path": "/api/device-registerd/create",
      "responses": [{{"json": {{"data": {{"device_id": "D", "orlan_id": "O"}}}}}}]}},
    {{"method": "POST", "path": "/api/plugin-activity/create", "responses": [{{"text": "ok"}}]}},
    {{"method": "POST", "path": "/api/activities", "responses": [{{"text": "ok"}}]}},
    {{"method": "POST", "path": "/api/check-geofence", "responses": [{}]}}
  ],
  "steps": [{}],
  "until": {}
}}
)",
                     life.beginsInFront ? "active" : "background", answers, steps,
                     at((life.events.empty() ? 0 : life.events.back().second) + 700));
}

}  // namespace orlan::simulate::life
