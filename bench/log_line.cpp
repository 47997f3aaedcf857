// What a log line costs the thread that writes it.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string_view>

#include "bench/MuteLog.hpp"
#include "orlan/logging/Breadcrumbs.hpp"

namespace orlan::bench {
namespace {

// The seven lines that detection writes for one polygon.
constexpr std::array<std::string_view, 7> kBlock{
    "🔍 Polygon detection for campaign 1042:",
    "  - Ray casting: false",
    "  - Buffer check: false",
    "  - Historical: false",
    "  - Location: 51.0630512, -1.3141203",
    "  - Accuracy: 5.0m",
    "  - Consensus: inside=false, confidence=0.95, method=outside_polygon"};

void lineByLine(benchmark::State& state) {
  MuteLog log;
  std::int64_t written = 0;
  for (auto _ : state) {
    for (const auto line : kBlock) log.logger().breadcrumb(line);
    if (++written % 1000 == 0) log.drain();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBlock.size()));
}
BENCHMARK(lineByLine);

void blockOfSeven(benchmark::State& state) {
  MuteLog log;
  Breadcrumbs breadcrumbs(log.logger());
  const auto tail = breadcrumbs.lines({kBlock[1], kBlock[2], kBlock[3], kBlock[4], kBlock[5], kBlock[6]});
  std::int64_t written = 0;
  for (auto _ : state) {
    breadcrumbs.add(kBlock.front(), tail);
    breadcrumbs.write();
    if (++written % 1000 == 0) log.drain();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBlock.size()));
}
BENCHMARK(blockOfSeven);

}  // namespace
}  // namespace orlan::bench
