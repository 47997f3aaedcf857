#include "orlan/c/Guard.hpp"

#include <array>
#include <cstdio>

namespace orlan::c {
namespace {

thread_local int depth = 0;
thread_local int tableDepth = 0;
thread_local std::array<char, 320> lastProblem = {};

}  // namespace

Inside::Inside() {
  ++depth;
}
Inside::~Inside() {
  --depth;
}
bool Inside::any() {
  return depth > 0;
}

InsideTable::InsideTable() {
  ++tableDepth;
}
InsideTable::~InsideTable() {
  --tableDepth;
}
void InsideTable::refuse() {
  if (tableDepth > 0) throw Misuse{ORLAN_BUSY, "inside a function of the phone"};
}

orlan_status note(const char* function, orlan_status status, const char* problem) noexcept {
  static_cast<void>(std::snprintf(lastProblem.data(), lastProblem.size(), "%s: %s", function, problem));
  return status;
}

}  // namespace orlan::c

const char* orlan_last_problem(void) {
  return orlan::c::lastProblem.data();
}
