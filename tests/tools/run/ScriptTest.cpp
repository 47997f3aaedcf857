#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/orlan/run/Script.hpp"

namespace orlan::run {
namespace {

TEST(Script, SaysWhatThePersonDoesAndWhen) {
  const auto script = parseScript(
      "# on the way\n\n00:30 background # in a pocket\r\n  5:07   stand\n05:07 walk\n1:02:03 front\nend quit",
      "day");
  ASSERT_TRUE(script) << script.error().description;
  std::vector<std::pair<std::optional<double>, Act>> found;
  for (const auto& line : *script) {
    found.emplace_back(line.at ? std::optional(seconds(*line.at)) : std::nullopt, line.command.act);
  }
  const std::vector<std::pair<std::optional<double>, Act>> expected{
      {30.0, Act::background}, {307.0, Act::stand},       {307.0, Act::walk},
      {3723.0, Act::front},    {std::nullopt, Act::quit},
  };
  EXPECT_EQ(found, expected);
  EXPECT_TRUE(parseScript("", "empty")->empty());
}

TEST(Script, AMistakeIsOneLineWithItsPlace) {
  const struct {
    const char* text;
    const char* expected;
  } rows[] = {
      {"background", "day: line 1: expected \"MINUTES:SECONDS COMMAND\""},
      {"00:10 walk\n12 background", "day: line 2: expected"},
      {"1:60 background", "day: line 1: expected"},
      {"-1:00 background", "day: line 1: expected"},
      {"1:2:3:4 background", "day: line 1: expected"},
      {"99999:00 background", "day: line 1: expected"},
      {"0:10 bakground", "day: line 1: unknown command \"bakground\"; there are background, front"},
      {"0:10 \x1b[31m", "day: line 1: unknown command \"\\u001b[31m\""},
      {"0:10 tap", "day: line 1: \"tap\" needs the number of a notification"},
      {"0:10 quit now", "day: line 1: \"quit\" stands alone"},
      {"0:10 stand\n0:09 walk", "day: line 2: earlier than the line before it"},
      {"end quit\n0:09 walk", "day: line 2: earlier than the line before it"},
  };
  for (const auto& row : rows) {
    const auto script = parseScript(row.text, "day");
    ASSERT_FALSE(script) << row.text;
    EXPECT_THAT(script.error().description, testing::StartsWith(row.expected)) << row.text;
  }
}

}  // namespace
}  // namespace orlan::run
