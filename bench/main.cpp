// Measures ours beside its peers and writes a table to standard output, `bench.json` and `bench.html`.
//
//   orlan_bench [--out DIRECTORY] [ROW…]
#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "bench/rows.hpp"

namespace orlan::bench {
namespace {

struct Kind {
  std::string_view name;
  void (*run)(Table&);
  bool inSmallProcess =
      false;  // it looks at the memory of children, which the system counts from their parent's on
};

constexpr Kind kinds[] = {
    {"turns", turns},   {"memory", memory, true}, {"response", response},   {"events", events},
    {"fix", fix},       {"log-line", logLine},    {"selection", selection}, {"containment", containment},
    {"day", day, true}, {"size", librarySize}};

bool wanted(std::string_view name, const std::vector<std::string_view>& names) {
  bool found = names.empty();
  for (const auto each : names) found |= each == name;
  return found;
}

/// The wanted rows, in the order above, whatever the order of measuring.
Table measured(const std::vector<std::string_view>& names) {
  std::array<Table, std::size(kinds)> tables;
  for (const bool early : {true, false}) {
    for (std::size_t i = 0; i < tables.size(); ++i) {
      if (kinds[i].inSmallProcess != early || !wanted(kinds[i].name, names)) continue;
      kinds[i].run(tables[i]);
      for (const Row& row : tables[i]) std::printf("%s\n", asText(row).c_str());
      std::fflush(stdout);
    }
  }
  Table all;
  for (Table& table : tables) std::move(table.begin(), table.end(), std::back_inserter(all));
  return all;
}

void write(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  if (!(file << text)) std::fprintf(stderr, "cannot write %s\n", path.c_str());
}

int run(std::vector<std::string_view> arguments) {
  std::string directory = ".";
  if (arguments.size() >= 2 && arguments[0] == "--out") {
    directory = arguments[1];
    arguments.erase(arguments.begin(), arguments.begin() + 2);
  }
  const Table table = measured(arguments);
  if (table.empty()) {
    std::fprintf(stderr, "usage: orlan_bench [--out DIRECTORY] [ROW...], of these rows:");
    for (const Kind& kind : kinds) std::fprintf(stderr, " %s", kind.name.data());
    std::fprintf(stderr, "\n");
    return 2;
  }
  write(directory + "/bench.json", asJson(table));
  write(directory + "/bench.html", asPage(table));
  return 0;
}

}  // namespace
}  // namespace orlan::bench

int main(int argc, char** argv) {
  return orlan::bench::run({argv + 1, argv + argc});
}
