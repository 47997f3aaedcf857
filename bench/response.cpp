// An answer of the backend, from its bytes to campaign data.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "bench/Town.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan {
namespace {

void countBytes(benchmark::State& state, const std::string& answer) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * answer.size()));
}

void parseAnswer(benchmark::State& state) {
  const std::string answer = bench::answerFor(bench::Town(static_cast<std::size_t>(state.range(0)), 66));
  for (auto _ : state) benchmark::DoNotOptimize(json::Document::parse(answer));
  countBytes(state, answer);
}

void decodeAnswer(benchmark::State& state) {
  const std::string answer = bench::answerFor(bench::Town(static_cast<std::size_t>(state.range(0)), 66));
  for (auto _ : state) benchmark::DoNotOptimize(NewGeofenceResponse::decode(answer));
  countBytes(state, answer);
}

void decodeAndConvertAnswer(benchmark::State& state) {
  const std::string answer = bench::answerFor(bench::Town(static_cast<std::size_t>(state.range(0)), 66));
  for (auto _ : state) {
    auto conversion = GeofenceConversion::of(answer);
    if (!conversion) std::abort();
    benchmark::DoNotOptimize(conversion);
  }
  countBytes(state, answer);
}

BENCHMARK(parseAnswer)->Arg(20)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(decodeAnswer)->Arg(20)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(decodeAndConvertAnswer)->Arg(20)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orlan
