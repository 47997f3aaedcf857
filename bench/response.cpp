// An answer of the backend, from its bytes to campaign data; the peers only make their bare tree.
#include <cstdlib>

#include "bench/Timing.hpp"
#include "bench/Town.hpp"
#include "bench/jsonPeers.hpp"
#include "bench/rows.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan::bench {

void response(Table& table) {
  Row& row = table.emplace_back(Row{"An answer decoded and converted", "campaigns", Unit::nanoseconds, {}});
  for (const std::size_t count : {20, 200, 1'000}) {
    const std::string answer = answerFor(Town(count, 66));
    const auto ours = [&] {
      const auto conversion = GeofenceConversion::of(answer);
      if (!conversion) std::abort();
      keep(conversion);
    };
    const auto treeOf = [&](auto parse) {
      return [&answer, parse] { return nanoseconds([&] { parse(answer, [] {}); }); };
    };
    row.measure(static_cast<double>(count), {{"ours", [&] { return nanoseconds(ours); }},
                                             {"RapidJSON's tree", treeOf(rapidjsonTree)},
                                             {"nlohmann's tree", treeOf(nlohmannTree)}});
  }
}

}  // namespace orlan::bench
