// The longest turn of the main loop, and what an answer costs on all queues together.
#include <array>
#include <cstdlib>

#include "bench/Host.hpp"
#include "bench/Town.hpp"
#include "bench/Workshop.hpp"
#include "bench/rows.hpp"

namespace orlan::bench {
namespace {

enum Phase { atLaunch, atAnswer, atRefresh, atEqualAnswer, atModeChange, phases };

struct Day {
  std::array<double, phases> longestTurn{};
  double answerWork = 0.0;
  double equalAnswerWork = 0.0;
};

/// A cached file, an answer with the same campaigns in other words, a refresh that brings other campaigns,
/// the same answer once more, and a change to the background and back.
Day play(const Town& town) {
  const Workshop workshop;
  const std::string first = answerFor(town);
  workshop.write("orlan-geofences.json", first);
  const std::string second = answerFor(town, 500'000);
  Host host(workshop.directory(), {51.05, -1.22}, {first + " ", second, second});
  Day day;
  const auto phase = [&](Phase which, auto&& action) {
    const double begin = threadTime();
    action();
    day.longestTurn[which] = host.loop().takeLongest();
    return threadTime() - begin;
  };
  phase(atLaunch, [&] { host.launch(); });
  if (host.polygons() != town.areas.size()) std::abort();  // or nothing of this was measured
  phase(atAnswer, [&] { host.waitForAnswer(); });
  day.answerWork = phase(atRefresh, [&] { host.refetch(); });
  day.equalAnswerWork = phase(atEqualAnswer, [&] { host.refetch(); });
  phase(atModeChange, [&] {
    host.moveTo(ApplicationState::background);
    host.moveTo(ApplicationState::active);
  });
  return day;
}

}  // namespace

void turns(Table& table) {
  constexpr std::array names{"launch with cached campaigns", "an answer", "a refresh with other campaigns",
                             "an answer equal to the last", "a mode change"};
  std::array<Row*, phases> rows{};
  for (std::size_t i = 0; i < phases; ++i) {
    rows[i] = &table.emplace_back(
        Row{std::string("Longest turn of the main loop: ") + names[i], "campaigns", Unit::nanoseconds, {}});
  }
  Row& equal = table.emplace_back(
      Row{"An answer equal to the last, on all queues", "campaigns", Unit::nanoseconds, {}});
  for (const std::size_t count : {100, 1'000, 10'000}) {
    const Town town(count, 66);
    std::vector<Day> days;
    for (std::size_t rounds = count < 10'000 ? 7 : 3; rounds > 0; --rounds) days.push_back(play(town));
    const auto medianOf = [&](auto&& part) {
      std::vector<double> values;
      for (const Day& day : days) values.push_back(part(day));
      return median(std::move(values));
    };
    const auto size = static_cast<double>(count);
    for (std::size_t i = 0; i < phases; ++i) {
      rows[i]->add(size, medianOf([i](const Day& day) { return day.longestTurn[i]; }));
    }
    const double ours = medianOf([](const Day& day) { return day.equalAnswerWork; });
    const double other = medianOf([](const Day& day) { return day.answerWork; });
    equal.points.push_back({size, {{"ours", ours, 1.0}, {"an answer that differs", other, other / ours}}});
  }
}

}  // namespace orlan::bench
