#include "tools/orlan/report/ReportData.hpp"

namespace orlan::report {

std::string ReportData::campaignName(std::int64_t campaignId) const {
  for (const Area& area : areas) {
    if (area.campaignId == campaignId && !area.name.empty()) return area.name;
  }
  return "campaign " + std::to_string(campaignId);
}

std::string ReportData::clockTime(Duration at) const {
  return localTimeOfDay(begin + at, utcOffset).substr(0, 8);
}

}  // namespace orlan::report
