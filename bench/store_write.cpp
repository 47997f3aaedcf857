// One write to the store of the real phone, a new value each time, on the disk that holds the temporary
// directory.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "phones/common/PhoneObserver.hpp"
#include "phones/linux/SqliteStore.hpp"

namespace orlan::bench {
namespace {

void storeWrite(benchmark::State& state) {
  std::string directory = std::filesystem::temp_directory_path() / "orlan-bench-XXXXXX";
  if (mkdtemp(directory.data()) == nullptr) return state.SkipWithError("no temporary directory");
  {
    phone::PhoneObserver nobody;
    linuxphone::SqliteStore store(directory + "/store.sqlite", nobody, {});
    std::int64_t value = 0;
    for (auto _ : state) store.set("Orlan.Bench", json::Value(++value));
  }
  std::filesystem::remove_all(directory);
}
BENCHMARK(storeWrite)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orlan::bench
