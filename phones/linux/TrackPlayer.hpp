#pragma once

#include <functional>

#include "orlan/platform/SerialQueue.hpp"
#include "phones/common/LocationHub.hpp"
#include "phones/linux/TimeSource.hpp"
#include "phones/linux/Track.hpp"

namespace orlan::linuxphone {

/// Walks a phone along a track: each fix at its own distance in time from the first, which comes at once, and
/// stamped with the phone's clock. When the loop is late, fixes come one after the other without a pause, and
/// none is left out. Main thread.
class TrackPlayer {
 public:
  TrackPlayer(MainLoop& main, const TimeSource& time, phone::LocationHub& locations)
      : main_(main), time_(time), locations_(locations) {}

  /// Replaces what is playing. `onFinished` runs once, after the last fix was heard; not after `stop`.
  void play(Track track, std::function<void()> onFinished);
  void stop();

  /// How many fixes of the track have been delivered.
  [[nodiscard]] std::size_t delivered() const { return next_; }

 private:
  void scheduleNext();
  void deliverNext();

  MainLoop& main_;
  const TimeSource& time_;
  phone::LocationHub& locations_;
  Track track_;
  std::function<void()> onFinished_;
  std::size_t next_ = 0;
  Duration begun_{};   // monotonic
  TimePoint begunAt_;  // wall clock
  Subscription timer_;
};

}  // namespace orlan::linuxphone
