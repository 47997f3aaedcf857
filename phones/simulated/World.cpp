#include "phones/simulated/World.hpp"

#include <algorithm>

#include "phones/simulated/SimulatedRandom.hpp"

namespace orlan::sim {

World::World(WorldSettings settings) : start_(settings.start), seed_(settings.seed) {}

void World::runFor(Duration duration) {
  const Duration left = Duration::max() - now();
  runUntil(now() + std::clamp(duration, Duration::zero(), left));
}

std::uint64_t World::nextSeed() {
  const std::uint64_t ofWorld = SimulatedRandom(seed_).next();  // neighbouring seeds share no phones
  return SimulatedRandom(ofWorld + phones_++).next();
}

}  // namespace orlan::sim
