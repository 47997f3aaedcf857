#include "orlan/c/Guard.hpp"

#include <array>
#include <cstdio>

namespace orlan::c {
namespace {

thread_local std::array<char, 320> lastProblem = {};

}  // namespace

thread_local int Inside::depth = 0;
thread_local int InsideTable::depth = 0;

orlan_status note(const char* function, orlan_status status, const char* problem) noexcept {
  static_cast<void>(std::snprintf(lastProblem.data(), lastProblem.size(), "%s: %s", function, problem));
  return status;
}

}  // namespace orlan::c

const char* orlan_last_problem(void) {
  return orlan::c::lastProblem.data();
}

const char* orlan_version(void) {
  return ORLAN_VERSION;
}
