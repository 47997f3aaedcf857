#pragma once

#include <ctime>

namespace orlan::bench {

/// Nanoseconds that this thread has worked: what other programs do on the same machine does not count.
inline double threadTime() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// Nanoseconds of one `work()`, done so often that the clock does not count.
template <class Work>
double nanoseconds(Work work) {
  constexpr double longEnough = 3e6;
  for (long times = 1;; times *= 2) {
    const double begin = threadTime();
    for (long i = 0; i < times; ++i) work();
    const double taken = threadTime() - begin;
    if (taken >= longEnough) return taken / static_cast<double>(times);
  }
}

/// Lets nobody optimise away what gave this value.
template <class T>
void keep(const T& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

}  // namespace orlan::bench
