#include "orlan/campaigns/ReliabilityStatus.hpp"

#include <cstddef>
#include <numeric>

namespace orlan {

ReliabilityStatus statusForMeanAccuracy(double metres) {
  if (!(metres >= 0.0)) return ReliabilityStatus::critical;
  if (metres < 10.0) return ReliabilityStatus::optimal;
  if (metres < 50.0) return ReliabilityStatus::degraded;
  if (metres < 100.0) return ReliabilityStatus::poor;
  return ReliabilityStatus::critical;
}

double AccuracyHistory::add(double accuracy) {
  constexpr std::size_t most = 50;
  accuracies_.push_back(accuracy);
  if (accuracies_.size() > most) accuracies_.pop_front();
  return std::accumulate(accuracies_.begin(), accuracies_.end(), 0.0) /
         static_cast<double>(accuracies_.size());
}

}  // namespace orlan
