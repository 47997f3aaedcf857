#include "phones/linux/TrackPlayer.hpp"

#include <utility>

namespace orlan::linuxphone {

void TrackPlayer::play(Track track, std::function<void()> onFinished) {
  main_.assertCurrent();
  track_ = std::move(track);
  onFinished_ = std::move(onFinished);
  next_ = 0;
  playing_ = true;
  standingSince_.reset();
  begun_ = time_.monotonicNow();
  begunAt_ = time_.wallNow();
  scheduleNext();
}

void TrackPlayer::stop() {
  main_.assertCurrent();
  timer_ = {};
  onFinished_ = nullptr;
  playing_ = false;
  standingSince_.reset();
}

void TrackPlayer::standStill() {
  main_.assertCurrent();
  if (!playing_ || standingSince_) return;
  standingSince_ = time_.monotonicNow();
  timer_ = {};
}

void TrackPlayer::walkOn() {
  main_.assertCurrent();
  if (!standingSince_) return;
  const Duration stood = time_.monotonicNow() - *std::exchange(standingSince_, std::nullopt);
  begun_ += stood;
  begunAt_ += stood;
  scheduleNext();
}

Duration TrackPlayer::walked() const {
  if (next_ == 0) return Duration(0);
  return track_.fixes[next_ - 1].timestamp - track_.fixes.front().timestamp;
}

void TrackPlayer::scheduleNext() {
  if (next_ == track_.fixes.size()) {
    timer_ = main_.after(Duration(0), [this] {
      playing_ = false;
      if (const auto finished = std::exchange(onFinished_, nullptr)) finished();
    });
    return;
  }
  const Duration due = begun_ + (track_.fixes[next_].timestamp - track_.fixes.front().timestamp);
  timer_ = main_.after(due - time_.monotonicNow(), [this] { deliverNext(); });
}

// The next timer is started first: who hears the fix may stop the player or play another track.
void TrackPlayer::deliverNext() {
  Location fix = track_.fixes[next_++];
  fix.timestamp = begunAt_ + (fix.timestamp - track_.fixes.front().timestamp);
  scheduleNext();
  locations_.deliver(std::span(&fix, 1));
}

}  // namespace orlan::linuxphone
