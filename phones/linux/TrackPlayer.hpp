#pragma once

#include <functional>
#include <optional>

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

  /// Stands still where the walk is: no fix comes and its times wait, until it goes on. Each does nothing
  /// when nothing changes.
  void standStill();
  void walkOn();
  [[nodiscard]] bool isStanding() const { return standingSince_.has_value(); }

  /// How many fixes of the track have been delivered.
  [[nodiscard]] std::size_t delivered() const { return next_; }

  /// How much of the track's time has been walked.
  [[nodiscard]] Duration walked() const;

 private:
  void scheduleNext();
  void deliverNext();

  MainLoop& main_;
  const TimeSource& time_;
  phone::LocationHub& locations_;
  Track track_;
  std::function<void()> onFinished_;
  std::size_t next_ = 0;
  bool playing_ = false;
  Duration begun_{};                       // monotonic, without the time stood still
  TimePoint begunAt_;                      // wall clock, likewise
  std::optional<Duration> standingSince_;  // monotonic
  Subscription timer_;
};

}  // namespace orlan::linuxphone
