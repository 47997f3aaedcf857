#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/Location.hpp"

namespace orlan::simulate::life {

/// A square area of a campaign, `halfSide` degrees to each side of its centre.
struct Area {
  std::int64_t campaign = 0;
  std::int64_t location = 0;
  Coordinate centre;

  [[nodiscard]] std::string identifier() const;
};
inline constexpr double halfSide = 0.001;

/// Both monitors, the regions of the operating system and the exit cooldown, told anew in a page: what is put
/// in is what happens to a host, what comes out is what the world must hear of it, a line each. It shares
/// nothing with the library but the distance between two places.
class MonitorModel {
 public:
  explicit MonitorModel(ApplicationState state, Coordinate position) : state_(state), position_(position) {}

  /// What must be heard next, in order.
  std::deque<std::string> expected;

  void advance(Duration now);     // virtual time; what is due by then has happened
  void setClock(TimePoint wall);  // from now on it goes on from there
  void relaunch(ApplicationState state);
  void registered();  // a start was answered
  void published(const std::vector<Area>& areas);
  void move(ApplicationState to);
  void signal(ApplicationSignal signal);
  void fixes(const std::vector<Location>& batch);
  void cross(const std::string& identifier, bool entering);
  void clearCooldown(bool background);

 private:
  struct Region {
    Area area;
    bool inside = false;
  };
  struct Process {
    std::optional<TimePoint> foregroundBorn, backgroundBorn;
    bool observes = false;
    // the foreground monitor
    bool inFront = false;
    std::optional<Coordinate> lastDelivered;
    std::vector<Area> tracked;
    std::set<std::int64_t> active;
    // the background monitor
    bool paused = false;
    bool listens = false;
    std::set<std::int64_t> campaigns;
    std::map<std::string, Area> watched;
    std::set<std::string> inside;
    std::optional<Duration> updatesEnd;
  };

  void say(std::string line) { expected.push_back(std::move(line)); }
  [[nodiscard]] TimePoint wall() const { return wallAtZero_ + now_; }
  void bearForeground();
  void bearBackground();
  void setInFront(bool inFront);
  void foregroundTakes(const Location& fix);
  void foregroundReacts(std::int64_t campaign, bool entering);
  void report(const std::string& identifier, bool entering);
  void exitAnnounced(std::int64_t campaign, TimePoint born, const char* monitor);
  void startUpdates();
  void stopUpdates();
  void lookAgain(const std::vector<Area>& areas);

  Duration now_{};
  TimePoint wallAtZero_ = std::chrono::sys_days(std::chrono::January / 1 / 2026);
  ApplicationState state_;
  Coordinate position_;
  std::vector<Region> regions_;
  std::optional<TimePoint> storedStart_;
  std::map<std::int64_t, TimePoint> lastAnnounced_;
  Process process_;
};

}  // namespace orlan::simulate::life
