#include "tools/orlan/run/ReplayStart.hpp"

#include <algorithm>

#include "orlan/base/text.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::run {

TimePoint ReplayStart::choose(TimePoint trackBegin) const {
  const auto kept = linuxphone::disk::read(file_);
  if (!kept) return trackBegin;
  const auto microseconds = text::toInteger(text::trimmed(*kept));
  if (!microseconds) return trackBegin;
  return std::max(trackBegin, TimePoint(Duration(*microseconds)) + std::chrono::seconds(1));
}

void ReplayStart::keep(TimePoint end) const {
  // Without it the next replay starts at its track's time again, which is the best that can be had then.
  (void)linuxphone::disk::replace(file_, std::to_string(end.time_since_epoch().count()) + "\n");
}

}  // namespace orlan::run
