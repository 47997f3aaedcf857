#include "tools/orlan/run/complain.hpp"

#include <fmt/format.h>

#include <cstdio>

#include "orlan/base/text.hpp"

namespace orlan::run {

void complain(const std::string& line) {
  fmt::print(stderr, "orlan run: {}\n", text::escapedControls(line));
}

}  // namespace orlan::run
