#include "phones/linux/TimeSource.hpp"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace orlan::linuxphone {
namespace {

// Longer sleeps are cut short, which only costs one early look at the clock.
constexpr std::chrono::nanoseconds longestSleep = std::chrono::hours(24 * 365);

double usableScale(double scale) {
  return std::isnan(scale) ? 1.0 : std::clamp(scale, 1e-3, 1e6);
}

}  // namespace

TimePoint RealTime::wallNow() const {
  return std::chrono::floor<Duration>(std::chrono::system_clock::now());
}

Duration RealTime::monotonicNow() const {
  return std::chrono::floor<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

std::chrono::nanoseconds RealTime::realTime(Duration phoneTime) const {
  return std::clamp<Duration>(phoneTime, Duration(0), std::chrono::floor<Duration>(longestSleep));
}

ReplayTime::ReplayTime(double scale, TimePoint start) : start_(start), pace_{usableScale(scale)} {}

void ReplayTime::setScale(double scale) {
  const std::lock_guard lock(mutex_);
  pace_ = {usableScale(scale), elapsed(pace_)};
}

TimePoint ReplayTime::wallNow() const {
  return start_ + monotonicNow();
}

Duration ReplayTime::monotonicNow() const {
  const std::lock_guard lock(mutex_);
  return elapsed(pace_);
}

Duration ReplayTime::elapsed(const Pace& pace) const {
  const std::chrono::duration<double, std::micro> real = std::chrono::steady_clock::now() - pace.begunAt;
  return pace.begun + Duration(static_cast<Duration::rep>(real.count() * pace.scale));
}

std::chrono::nanoseconds ReplayTime::realTime(Duration phoneTime) const {
  const std::lock_guard lock(mutex_);
  const double nanoseconds = std::ceil(static_cast<double>(phoneTime.count()) * 1000.0 / pace_.scale);
  if (!(nanoseconds > 0)) return std::chrono::nanoseconds(0);
  if (nanoseconds >= static_cast<double>(longestSleep.count())) return longestSleep;
  return std::chrono::nanoseconds(static_cast<std::chrono::nanoseconds::rep>(nanoseconds));
}

std::chrono::seconds SystemClock::offsetFromUtc(TimePoint time) const {
  const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
  std::tm local{};
  if (localtime_r(&seconds, &local) == nullptr) return std::chrono::seconds(0);
  return std::chrono::seconds(local.tm_gmtoff);
}

}  // namespace orlan::linuxphone
