#include <gtest/gtest.h>

#include <cstdlib>

#include "tools/orlan/simulate/timeZone.hpp"

namespace orlan::simulate {
namespace {

using namespace std::chrono;

constexpr auto winter = sys_days(January / 15 / 2026);
constexpr auto springForward = sys_days(March / 29 / 2026) + hours(1);  // in London

TEST(TimeZone, IsAnOffsetOrAName) {
  ASSERT_EQ(::setenv("TZ", "Asia/Tokyo", 1), 0);
  const struct {
    const char* name;
    TimePoint at;
    long minutes;
  } rows[] = {
      {"Z", winter, 0},
      {"UTC-3", winter, -180},
      {"-0330", winter, -210},
      {"GMT+05:45", winter, 345},
      {"-0:30", winter, -30},
      {"Europe/London", springForward - 1s, 0},
      {"Europe/London", springForward, 60},
      {"Europe/London", TimePoint(), 60},                // summer time all year then
      {"Europe/London", sys_days(July / 1 / 2090), 60},  // by the rules at the file's end
      {"Etc/GMT+2", winter, -120},
  };
  for (const auto& row : rows) {
    const auto zone = timeZone(row.name);
    ASSERT_TRUE(zone) << row.name << ": " << zone.error().description;
    EXPECT_EQ(*zone ? (*zone)(row.at) : 0s, minutes(row.minutes)) << row.name;
  }
  EXPECT_STREQ(std::getenv("TZ"), "Asia/Tokyo") << "the process's own zone is back";
  ::unsetenv("TZ");
  for (const char* name :
       {"", "../../etc/passwd", "Europe", "tzdata.zi", "GMT+", "GMT+99", "+:30", "+12345"}) {
    EXPECT_FALSE(timeZone(name)) << name;
  }
}

}  // namespace
}  // namespace orlan::simulate
