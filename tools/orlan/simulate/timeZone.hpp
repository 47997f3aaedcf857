#pragma once

#include <string_view>

#include "orlan/base/Result.hpp"
#include "phones/simulated/SimulatedClock.hpp"

namespace orlan::simulate {

/// "UTC", "GMT" or "Z"; a fixed offset, positive east, with any of these in front or nothing ("GMT+2",
/// "+02:00",
/// "-0330"); or a name of the machine's zone data ("Europe/London"). The error (domain "TimeZone") says what
/// is wrong with any other name.
///
/// For a program that has one thread at the time: the C library, which is asked about a name, knows one zone
/// a process, and is told of the other one for the moment of the question.
[[nodiscard]] Result<sim::UtcOffset> timeZone(std::string_view name);

}  // namespace orlan::simulate
