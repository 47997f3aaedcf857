#pragma once

#include <atomic>
#include <cstdint>

#include "orlan/platform/RandomSource.hpp"

namespace orlan::sim {

/// The same numbers for the same seed (SplitMix64). Any thread.
class SimulatedRandom final : public RandomSource {
 public:
  explicit SimulatedRandom(std::uint64_t seed) : state_(seed) {}

  [[nodiscard]] std::uint64_t next() override {
    constexpr std::uint64_t step = 0x9e3779b97f4a7c15;
    std::uint64_t mixed = state_.fetch_add(step) + step;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
    return mixed ^ (mixed >> 31);
  }

 private:
  std::atomic<std::uint64_t> state_;
};

}  // namespace orlan::sim
