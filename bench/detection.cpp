// One fix against every campaign area, decided and logged: what the thread that delivers fixes pays. Lines
// are made and handed to a console that swallows them; writing the file is the log's own queue's work.
#include "orlan/campaigns/Detection.hpp"

#include <benchmark/benchmark.h>

#include "bench/MuteLog.hpp"
#include "bench/Town.hpp"

namespace orlan {
namespace {

void detection(benchmark::State& state, double accuracy) {
  bench::Town town(static_cast<std::size_t>(state.range(0)));
  const PolygonSet set(town.polygons());
  const auto places = town.walk();
  bench::MuteLog log;
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(detectGeofences({places[next], accuracy, {}}, set, log.logger()));
    next = (next + 1) % places.size();
    log.drain();  // next to nothing: the files swallow it
  }
  state.counters["per polygon"] =
      benchmark::Counter(static_cast<double>(state.range(0)),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void detectionGoodFix(benchmark::State& state) {
  detection(state, 10.0);
}
void detectionPoorFix(benchmark::State& state) {
  detection(state, 50.0);
}

BENCHMARK(detectionGoodFix)->Arg(20)->Arg(100)->Arg(1000);
BENCHMARK(detectionPoorFix)->Arg(20)->Arg(100)->Arg(1000);

}  // namespace
}  // namespace orlan
