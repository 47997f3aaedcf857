#include <gtest/gtest.h>

#include <vector>

#include "tools/orlan/run/KeyInput.hpp"

namespace orlan::run {
namespace {

TEST(KeyInput, MakesCommandsOfKeys) {
  using Commands = std::vector<Command>;
  const struct {
    const char* name;
    bool asking;
    std::vector<const char*> chunks;
    Commands expected;
    const char* waiting;
  } rows[] = {
      {"a letter acts at once", false, {"b", "F", "x"}, {{Act::background}, {Act::front}}, ""},
      {"a number taps", false, {"12\x7f", "3\r"}, {{Act::tap, "13"}}, ""},
      {"a letter drops the number", false, {"12w\n"}, {{Act::walk}}, ""},
      {"backspace takes a whole character", true, {"a \xc3\xb6\x7f\n"}, {{Act::answer, "a "}}, ""},
      {"escape drops the line, then closes", true, {"abc", "\x1b", "\x1b"}, {{Act::close}}, ""},
      {"an arrow is nothing", true, {"a", "\x1b[A"}, {}, "a"},
  };
  for (const auto& row : rows) {
    KeyInput input;
    Commands got;
    for (const char* chunk : row.chunks) {
      input.take(
          chunk, [&] { return row.asking; }, [&](const Command& command) { got.push_back(command); });
    }
    EXPECT_EQ(got, row.expected) << row.name;
    EXPECT_EQ(input.typed(), row.waiting) << row.name;
  }
}

}  // namespace
}  // namespace orlan::run
