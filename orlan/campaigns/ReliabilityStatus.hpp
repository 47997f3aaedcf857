#pragma once

#include <array>
#include <deque>
#include <string_view>
#include <utility>

#include "orlan/base/Enumeration.hpp"

namespace orlan {

/// How good the latest fixes are.
enum class ReliabilityStatus { optimal, degraded, poor, critical };

template <>
struct RawValues<ReliabilityStatus> {
  using S = ReliabilityStatus;
  static constexpr std::array table{std::pair{S::optimal, std::string_view("optimal")},
                                    std::pair{S::degraded, std::string_view("degraded")},
                                    std::pair{S::poor, std::string_view("poor")},
                                    std::pair{S::critical, std::string_view("critical")}};
};

/// From a mean horizontal accuracy in metres: below 10, 50 and 100; beyond, negative or not a number is
/// critical.
[[nodiscard]] ReliabilityStatus statusForMeanAccuracy(double metres);

/// The horizontal accuracies of the last 50 fixes, metres.
class AccuracyHistory {
 public:
  /// Adds one and forgets the oldest beyond 50. The mean of what is held, summed from the oldest on.
  double add(double accuracy);

 private:
  std::deque<double> accuracies_;
};

}  // namespace orlan
