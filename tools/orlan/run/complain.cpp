#include "tools/orlan/run/complain.hpp"

#include <fmt/format.h>

#include <cstdio>

#include "orlan/base/text.hpp"

namespace orlan::run {

int complain(const std::string& line, int status) {
  fmt::print(stderr, "orlan run: {}\n", text::escapedControls(line));
  return status;
}

}  // namespace orlan::run
