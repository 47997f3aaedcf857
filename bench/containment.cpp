// One place against every campaign area: edge by edge, polygon by polygon, and all at once.
#include <benchmark/benchmark.h>

#include "bench/Town.hpp"
#include "orlan/campaigns/PolygonSet.hpp"
#include "orlan/platform/VertexDistance.hpp"

namespace orlan {
namespace {

/// Runs `visit(place)` for one place after the other.
template <class Visit>
void forEachPlace(benchmark::State& state, const std::vector<Coordinate>& places, Visit visit) {
  std::size_t next = 0;
  for (auto _ : state) {
    visit(places[next]);
    next = (next + 1) % places.size();
  }
}

void containsPlainLoop(benchmark::State& state) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  forEachPlace(state, town.walk(), [&](Coordinate place) {
    for (const auto& area : town.areas) benchmark::DoNotOptimize(rayCastingContains(area, place));
  });
}

void containsEachPolygon(benchmark::State& state) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  const auto polygons = town.polygons();
  forEachPlace(state, town.walk(), [&](Coordinate place) {
    for (const auto& each : polygons) benchmark::DoNotOptimize(each.polygon.rayCastingContains(place));
  });
}

void containsPolygonSet(benchmark::State& state) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  const PolygonSet set(town.polygons());
  forEachPlace(state, town.walk(),
               [&](Coordinate place) { benchmark::DoNotOptimize(set.containing(place)); });
}

constexpr double bufferMetres = 25.0;  // of a fix with 50 m accuracy

void nearEveryDistance(benchmark::State& state) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  forEachPlace(state, town.walk(), [&](Coordinate place) {
    for (const auto& area : town.areas) {
      bool near = false;
      for (const Coordinate& vertex : area) near |= distance(place, vertex) <= bufferMetres;
      benchmark::DoNotOptimize(near);
    }
  });
}

void nearEachPolygon(benchmark::State& state) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  const auto polygons = town.polygons();
  forEachPlace(state, town.walk(), [&](Coordinate place) {
    for (const auto& each : polygons) {
      benchmark::DoNotOptimize(each.polygon.hasVertexWithin(place, bufferMetres));
    }
  });
}

void nearPolygonSet(benchmark::State& state) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  const PolygonSet set(town.polygons());
  forEachPlace(state, town.walk(), [&](Coordinate place) {
    benchmark::DoNotOptimize(set.withVertexWithin(place, bufferMetres));
  });
}

void arrangePolygons(benchmark::State& state) {
  const bench::Town town(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(PolygonSet(town.polygons()));
}

BENCHMARK(containsPlainLoop)->Arg(20)->Arg(100)->Arg(1000);
BENCHMARK(containsEachPolygon)->Arg(20)->Arg(100)->Arg(1000);
BENCHMARK(containsPolygonSet)->Arg(20)->Arg(100)->Arg(1000)->Arg(10000);
BENCHMARK(nearEveryDistance)->Arg(100);
BENCHMARK(nearEachPolygon)->Arg(20)->Arg(100)->Arg(1000);
BENCHMARK(nearPolygonSet)->Arg(20)->Arg(100)->Arg(1000);
BENCHMARK(arrangePolygons)->Arg(20)->Arg(1000);

}  // namespace
}  // namespace orlan
