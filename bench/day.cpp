// Days played by the program: what each costs in time and memory, in a process of its own.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "bench/Child.hpp"
#include "bench/Town.hpp"
#include "bench/Workshop.hpp"
#include "bench/rows.hpp"
#include "orlan/base/json.hpp"

namespace orlan::bench {
namespace {

json::Object route(const char* path, json::Object response) {
  return {{"method", "POST"}, {"path", path}, {"responses", json::Array{std::move(response)}}};
}

json::Object step(double at, const char* what, json::Object arguments) {
  arguments.set("at", at);
  arguments.set("do", what);
  return arguments;
}

json::Array pointOf(Coordinate place) {
  return {place.latitude, place.longitude};
}

constexpr double interval = 2.0;  // seconds between fixes
constexpr double speed = 6.0;     // metres a second, so that each fix passes the library's distance filter

/// From one place in town to the next, for that long.
json::Array ride(Town& town, double seconds) {
  Coordinate last = town.walk(1).front();
  json::Array points{pointOf(last)};
  for (double metres = 0.0; metres < speed * seconds;) {
    const Coordinate next = town.walk(1).front();
    metres += distance(last, next);
    points.emplace_back(pointOf(next));
    last = next;
  }
  return points;
}

std::string dayIn(Town town, std::size_t fixes) {
  const double seconds = interval * static_cast<double>(fixes);
  json::Object position{{"latitude", 51.05}, {"longitude", -1.22}};
  return json::print(json::Object{
      {"device", json::Object{{"position", std::move(position)}}},
      {"backend",
       json::Array{
           route("/api/device-registerd/create",
                 {{"json", json::Object{{"data", json::Object{{"device_id", "D1"}, {"orlan_id", "O1"}}}}}}),
           route("/api/check-geofence", {{"text", answerFor(town)}}),
           route("/api/plugin-activity/create", {{"text", "ok"}}),
           route("/api/activities", {{"text", "ok"}})}},
      {"steps",
       json::Array{
           step(0, "start", {{"apiKey", "KEY"}}),
           step(10, "track", {{"points", ride(town, seconds)}, {"speed", speed}, {"interval", interval}})}},
      {"until", 10.0 + seconds}});
}

struct Use {
  double time = 0.0;    // nanoseconds of all its threads
  double memory = 0.0;  // bytes at the peak
};

Use play(const std::string& scenario, const std::string& transcript) {
  const pid_t child = fork();  // not vfork: the child's peak would be that of this process
  if (child == 0) {
    execl(ORLAN_PROGRAM, ORLAN_PROGRAM, "simulate", scenario.c_str(), "--quiet", "--only",
          "notification,region", "--transcript", transcript.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  rusage used{};
  if (child < 0 || wait4(child, &status, 0, &used) != child || status != 0) std::abort();
  const auto nanoseconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
  };
  return {nanoseconds(used.ru_utime) + nanoseconds(used.ru_stime),
          static_cast<double>(used.ru_maxrss) * 1024.0};
}

void measure(Row& time, Row& memory, double size, std::size_t campaigns, std::size_t fixes) {
  const Workshop workshop;
  apart([&] { workshop.write("day.json", dayIn(Town(campaigns, 66), fixes)); });
  double peak = 0.0;
  time.measure(size, {{"ours", [&] {
                         const Use use = play(workshop.path("day.json"), workshop.path("transcript.jsonl"));
                         peak = use.memory;
                         return use.time;
                       }}});
  memory.add(size, peak);
}

}  // namespace

void day(Table& table) {
  const auto row = [&](const char* work, const char* axis, Unit unit) -> Row& {
    return table.emplace_back(Row{work, axis, unit, {}});
  };
  Row& time = row("A simulated day of 100 campaigns", "fixes", Unit::nanoseconds);
  Row& memory = row("A simulated day of 100 campaigns, its memory", "fixes", Unit::bytes);
  for (const std::size_t fixes : {1'130, 11'304, 33'912}) {
    measure(time, memory, static_cast<double>(fixes), 100, fixes);
  }
  Row& wide = row("100 simulated fixes", "campaigns", Unit::nanoseconds);
  Row& wideMemory = row("100 simulated fixes, their memory", "campaigns", Unit::bytes);
  for (const std::size_t campaigns : {100, 1'000, 10'000}) {
    measure(wide, wideMemory, static_cast<double>(campaigns), campaigns, 100);
  }
}

}  // namespace orlan::bench
