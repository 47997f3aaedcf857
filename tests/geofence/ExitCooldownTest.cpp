#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "orlan/geofence/CooldownStore.hpp"
#include "orlan/geofence/ExitCooldown.hpp"
#include "phones/simulated/SimulatedStore.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using Verdict = ExitCooldown::Verdict;

constexpr TimePoint now = std::chrono::sys_days(std::chrono::January / 1 / 2026);

TEST(ExitCooldown, DecidesByTheLastAnnouncementAndTheRun) {
  struct Row {
    const char* name;
    TimePoint appStart;
    std::optional<TimePoint> storedStart, lastAnnounced;
    ExitCooldown expected;
  };
  constexpr TimePoint start = now - 1h;
  const Row rows[] = {
      {"first check ever", start, {}, {}, {Verdict::allowed, 0s}},
      {"first check ever, announced before", start, {}, now - 10s, {Verdict::denied, 10s}},
      {"same run, just announced", start, start, now, {Verdict::denied, 0s}},
      {"899.9 s", start, start, now - 899'900ms, {Verdict::denied, 899'900ms}},
      {"a microsecond short", start, start, now - 900s + 1us, {Verdict::denied, 900s - 1us}},
      {"exactly 900 s", start, start, now - 900s, {Verdict::allowed, 0s}},
      {"in the future", start, start, now + 7500ms, {Verdict::denied, -7500ms}},
      {"later run", start, start - 1us, now - 10s, {Verdict::restarted, 0s}},
      {"later run, nothing announced", start, start - 24h, {}, {Verdict::restarted, 0s}},
      {"the other monitor started later", start, start + 2s, now - 10s, {Verdict::denied, 10s}},
      {"the other monitor started later, cooldown over", start, start + 2s, now - 2h, {Verdict::allowed, 0s}},
      {"as far back as times go", start, start, TimePoint::min(), {Verdict::allowed, 0s}},
      {"as far ahead as times go", start, start, TimePoint::max(), {Verdict::denied, now - TimePoint::max()}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ExitCooldown::decide(now, row.appStart, row.storedStart, row.lastAnnounced), row.expected)
        << row.name;
  }
}

class CooldownStoreTest : public testing::Test {
 protected:
  phone::PhoneObserver nobody_;
  sim::SimulatedStore values_{nobody_, {}};
  CooldownStore store_{values_};
};

TEST_F(CooldownStoreTest, KeepsTimesAsSecondsSince2001UnderTheirKeys) {
  store_.setAppStartTime(now);
  store_.setLastNotification(42, "ON_EXIT", now + 1500ms);
  EXPECT_EQ(values_.contents(), (json::Object{{"Orlan_AppStartTime", Bytes{"788918400.0"}},
                                              {"Orlan_LastNotification_42_ON_EXIT", Bytes{"788918401.5"}}}));
  EXPECT_EQ(store_.appStartTime(), now);
  EXPECT_EQ(store_.lastNotification(42, "ON_EXIT"), now + 1500ms);
  EXPECT_EQ(store_.lastNotification(4, "ON_EXIT"), std::nullopt);
  EXPECT_EQ(cooldownKeys::lastNotification(std::numeric_limits<std::int64_t>::min(), "ON_EXIT"),
            "Orlan_LastNotification_-9223372036854775808_ON_EXIT");
}

TEST_F(CooldownStoreTest, WhatIsNoTimeCountsAsAbsent) {
  const std::pair<const char*, json::Value> rows[] = {
      {"text instead of bytes", "788918400.0"},
      {"number instead of bytes", 788918400.0},
      {"empty", Bytes{""}},
      {"no JSON", Bytes{"tomorrow"}},
      {"two numbers", Bytes{"1 2"}},
      {"a JSON text", Bytes{"\"788918400\""}},
      {"an array", Bytes{"[788918400]"}},
      {"out of range", Bytes{"1e999"}},
      {"not UTF-8", Bytes{"\xff\xfe"}},
  };
  for (const auto& [name, value] : rows) {
    values_.set(cooldownKeys::appStartTime, value);
    EXPECT_EQ(store_.appStartTime(), std::nullopt) << name;
  }
  values_.set(cooldownKeys::appStartTime, Bytes{" 788918400 "});  // somebody else's JSON of the same number
  EXPECT_EQ(store_.appStartTime(), now);
}

TEST_F(CooldownStoreTest, ClearForgetsEveryAnnouncementButNotTheStart) {
  values_.set("Orlan_LastNotification_7_ON_EXIT", "whatever stands there");
  values_.set("Orlan_LastNotifications", 1);
  store_.setLastNotification(42, "ON_EXIT", now);
  store_.setAppStartTime(now);
  store_.clear();
  EXPECT_EQ(values_.contents(),
            (json::Object{{"Orlan_AppStartTime", Bytes{"788918400.0"}}, {"Orlan_LastNotifications", 1}}));
}

}  // namespace
}  // namespace orlan
