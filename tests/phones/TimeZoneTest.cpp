#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "phones/simulated/TimeZone.hpp"

namespace orlan::sim {
namespace {

using namespace std::chrono;

std::int64_t utc(int y, unsigned m, unsigned d, int h = 0, int min = 0, int s = 0) {
  const sys_seconds time =
      sys_days(year(y) / month(m) / day(d)) + hours(h) + minutes(min) + std::chrono::seconds(s);
  return time.time_since_epoch().count();
}

TEST(PosixZone, ChangesByItsRulesEveryYear) {
  const struct {
    const char* zone;
    std::int64_t at;
    long minutes;
  } rows[] = {
      {"GMT0", utc(2026, 7, 1), 0},
      {"<+0330>-3:30", utc(2026, 7, 1), 210},
      {"EST5", utc(2026, 7, 1), -300},
      {"CET-1CEST,M3.5.0,M10.5.0/3", utc(2026, 3, 29, 0, 59, 59), 60},
      {"CET-1CEST,M3.5.0,M10.5.0/3", utc(2026, 3, 29, 1), 120},
      {"CET-1CEST,M3.5.0,M10.5.0/3", utc(2026, 10, 25, 0, 59, 59), 120},
      {"CET-1CEST,M3.5.0,M10.5.0/3", utc(2026, 10, 25, 1), 60},
      {"EST5EDT,M3.2.0,M11.1.0", utc(2026, 3, 8, 6, 59, 59), -300},
      {"EST5EDT,M3.2.0,M11.1.0", utc(2026, 3, 8, 7), -240},
      {"AEST-10AEDT,M10.1.0,M4.1.0/3", utc(2026, 1, 1), 660},
      {"AEST-10AEDT,M10.1.0,M4.1.0/3", utc(2026, 7, 1), 600},
      {"IST-1GMT0,M10.5.0,M3.5.0/1", utc(2026, 1, 1), 0},
      {"IST-1GMT0,M10.5.0,M3.5.0/1", utc(2026, 7, 1), 60},
      {"AAA0BBB,J60/0,J61/0", utc(2028, 3, 1), 60},  // the 60th day, leap days not counted
      {"AAA0BBB,J60/0,J61/0", utc(2028, 2, 29), 0},
      {"AAA0BBB,59/0,60/0", utc(2028, 2, 29), 60},  // day 59 from 0, leap days counted
      {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", utc(2026, 3, 29, 1), -60},
  };
  for (const auto& row : rows) {
    const auto zone = PosixZone::parse(row.zone);
    ASSERT_TRUE(zone) << row.zone;
    EXPECT_EQ(zone->offsetAt(row.at), minutes(row.minutes)) << row.zone << " at " << row.at;
  }
  for (const char* bad : {"", "UTC", "A1", "CET-1CEST", "CET-1CEST,M3.5.0", "CET-1CEST,M13.5.0,M10.5.0",
                          "CET-999", "<+03-3", "CET-1CEST,M3.5.0,M10.5.0/3x", "CET-1:99"}) {
    EXPECT_FALSE(PosixZone::parse(bad)) << bad;
  }
}

TEST(TimeZone, FixedOffsetsAreReadInEveryUsualForm) {
  const struct {
    const char* name;
    long minutes;
  } rows[] = {{"UTC", 0},      {"GMT", 0},      {"Z", 0},           {"GMT+2", 120}, {"UTC-3", -180},
              {"+02:00", 120}, {"-0330", -210}, {"GMT+05:45", 345}, {"+14", 840},   {"-0:30", -30}};
  for (const auto& row : rows) {
    const auto zone = TimeZone::named(row.name);
    ASSERT_TRUE(zone) << row.name;
    EXPECT_EQ(zone->offsetAt(TimePoint()), minutes(row.minutes)) << row.name;
  }
}

TEST(TimeZone, AnUnknownNameIsAnErrorThatNamesIt) {
  for (const char* name : {"", "Europe/Atlantis", "../../etc/passwd", "/etc/passwd", "Europe", "GMT+",
                           "GMT+99", "+2:5", "+:30", "Europe/Lon don"}) {
    const auto zone = TimeZone::named(name);
    ASSERT_FALSE(zone) << name;
    EXPECT_NE(zone.error().description.find(name), std::string::npos) << zone.error().description;
  }
}

TEST(TimeZone, KnowsTheMachinesZones) {
  if (!std::filesystem::exists("/usr/share/zoneinfo/Europe/London")) GTEST_SKIP() << "no zone data here";
  const struct {
    const char* name;
    std::int64_t at;
    long minutes;
  } rows[] = {
      {"Europe/London", utc(2026, 1, 15), 0},
      {"Europe/London", utc(2026, 3, 29, 1), 60},
      {"Europe/London", utc(1970, 1, 1), 60},  // summer time all year then
      {"Europe/London", utc(2090, 7, 1), 60},  // by the rules at the file's end
      {"America/New_York", utc(2026, 3, 8, 6, 59, 59), -300},
      {"Asia/Kolkata", utc(2026, 1, 1), 330},
      {"Australia/Lord_Howe", utc(2026, 1, 1), 660},
      {"Etc/GMT+2", utc(2026, 1, 1), -120},
  };
  for (const auto& row : rows) {
    const auto zone = TimeZone::named(row.name);
    ASSERT_TRUE(zone) << row.name << ": " << zone.error().description;
    EXPECT_EQ(zone->offsetAt(TimePoint(std::chrono::seconds(row.at))), minutes(row.minutes))
        << row.name << " at " << row.at;
  }
}

/// A compiled zone file with one change, from +1 h to +2 h at second 1000.
std::string zoneFile() {
  const auto number = [](std::uint64_t value, int size) {
    std::string bytes;
    for (int i = size - 1; i >= 0; --i) bytes += static_cast<char>(value >> (8 * i));
    return bytes;
  };
  const std::string magic = "TZif2" + std::string(15, '\0');
  const std::string none = magic + std::string(24, '\0');
  const std::string header =
      magic + number(0, 4) + number(0, 4) + number(0, 4) + number(1, 4) + number(2, 4) + number(4, 4);
  return none + header + number(1000, 8) + number(1, 1) + number(3600, 4) + number(0, 2) + number(7200, 4) +
         number(0, 2) + std::string("ABC\0", 4) + "\nABC-3\n";
}

TEST(TimeZone, EveryDamagedZoneFileIsRefused) {
  const std::string whole = zoneFile();
  const auto zone = TimeZone::fromZoneFile(whole);
  ASSERT_TRUE(zone) << zone.error().description;
  EXPECT_EQ(zone->offsetAt(TimePoint(std::chrono::seconds(999))), hours(1));
  EXPECT_EQ(zone->offsetAt(TimePoint(std::chrono::seconds(1000))), hours(3));  // the rules at the end say so
  const std::size_t footer = 7;
  for (std::size_t size = 0; size < whole.size() - footer; ++size) {
    EXPECT_FALSE(TimeZone::fromZoneFile(std::string_view(whole).substr(0, size))) << size;
  }
  for (std::size_t i = 0; i < whole.size(); ++i) {
    std::string damaged = whole;
    damaged[i] = '\x7f';
    if (const auto read = TimeZone::fromZoneFile(damaged))
      (void)read->offsetAt(TimePoint(std::chrono::seconds(1500)));
  }
}

}  // namespace
}  // namespace orlan::sim
