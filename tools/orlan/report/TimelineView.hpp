#pragma once

#include <string>

#include "tools/orlan/report/ReportData.hpp"

namespace orlan::report {

/// The run from left to right as one SVG element: a lane for the areas the phone was in, one for
/// notifications, one for requests (failed ones stand out), one for moments; with clock times below.
[[nodiscard]] std::string timelineView(const ReportData& data);

/// Everything in one table, in order of time.
[[nodiscard]] std::string eventTable(const ReportData& data);

}  // namespace orlan::report
