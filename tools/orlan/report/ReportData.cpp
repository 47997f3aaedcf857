#include "tools/orlan/report/ReportData.hpp"

namespace orlan::report {

std::string ReportData::clockTime(Duration at) const {
  return localTimeOfDay(begin + at, utcOffset).substr(0, 8);
}

}  // namespace orlan::report
