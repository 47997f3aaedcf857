#pragma once

#include <string>

#include "tools/orlan/report/ReportData.hpp"

namespace orlan::report {

/// One self-contained HTML page: summary, map, timeline, the notifications as a person would see them, and
/// every event in a table. Nothing is loaded from elsewhere, and no text of a campaign can become markup.
[[nodiscard]] std::string renderReport(const ReportData& data);

}  // namespace orlan::report
