#pragma once

#include <functional>
#include <map>
#include <string>

namespace orlan::bench {

/// Does `work` in a process of its own, so that this one stays as small as it is.
void apart(const std::function<void()>& work);

/// What some work did to the memory of its process, in bytes.
struct Memory {
  double asked = 0.0;    // address space at its peak
  double touched = 0.0;  // pages at their peak
  double kept = 0.0;     // pages at the end
};

/// Measures the process that it is used in, which ends with `stop`.
class Meter {
 public:
  explicit Meter(int result) : result_(result) {}
  void start();
  [[noreturn]] void stop();  // while what was made is still there

 private:
  int result_;
  std::map<std::string, double> before_;
};

/// Lets `work` prepare, start, do what is measured, and stop, in a process of its own: nothing is in memory
/// yet that it could use again.
[[nodiscard]] Memory inChild(const std::function<void(Meter&)>& work);

}  // namespace orlan::bench
