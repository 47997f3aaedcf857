// Memory: of a host with a cache and an answer, and of decoding an answer. Each is measured once, in a
// process of its own: it is the same each time.
#include <cstdlib>

#include "bench/Child.hpp"
#include "bench/Host.hpp"
#include "bench/Town.hpp"
#include "bench/Workshop.hpp"
#include "bench/jsonPeers.hpp"
#include "bench/rows.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan::bench {
namespace {

constexpr const char* cacheFile = "orlan-geofences.json";

Memory ofHost(const Workshop& workshop, std::size_t campaigns) {
  return inChild([&](Meter& meter) {
    Host host(workshop.directory(), {51.05, -1.22}, {workshop.read(cacheFile) + " "});
    meter.start();
    host.launch();
    host.waitForAnswer();
    if (host.polygons() != campaigns) std::abort();
    meter.stop();
  });
}

Memory ofDecoding(const Workshop& workshop) {
  return inChild([&](Meter& meter) {
    const std::string answer = workshop.read(cacheFile);
    meter.start();
    const auto conversion = GeofenceConversion::of(answer);
    if (!conversion) std::abort();
    meter.stop();
  });
}

Memory ofRapidjson(const Workshop& workshop) {
  return inChild([&](Meter& meter) {
    const std::string answer = workshop.read(cacheFile);
    meter.start();
    rapidjsonTree(answer, [&] { meter.stop(); });
  });
}

}  // namespace

void memory(Table& table) {
  const auto row = [&](const char* work, Unit unit) -> Row& {
    return table.emplace_back(Row{work, "campaigns", unit, {}});
  };
  Row& kept = row("Memory of the library with a cache and an answer", Unit::bytes);
  Row& peak = row("Memory of the library with a cache and an answer, at its peak", Unit::bytes);
  Row& asked = row("Decoding an answer: memory asked for, per byte of the answer", Unit::times);
  Row& touched = row("Decoding an answer: memory touched, per byte of the answer", Unit::times);
  for (const std::size_t count : {100, 1'000, 10'000}) {
    const Workshop workshop;
    apart([&] { workshop.write(cacheFile, answerFor(Town(count, 66))); });
    const auto size = static_cast<double>(count);
    const double bytes = workshop.size(cacheFile);
    const Memory ours = ofDecoding(workshop);
    const Memory peer = ofRapidjson(workshop);
    const auto compare = [&](double mine, double theirs) {
      return Point{size, {{"ours", mine / bytes, 1.0}, {"RapidJSON's tree", theirs / bytes, theirs / mine}}};
    };
    asked.points.push_back(compare(ours.asked, peer.asked));
    touched.points.push_back(compare(ours.touched, peer.touched));
    const Memory host = ofHost(workshop, count);
    kept.add(size, host.kept);
    peak.add(size, host.touched);
  }
}

}  // namespace orlan::bench
