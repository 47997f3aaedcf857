#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "phones/common/PhoneObserver.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/simulate/MonitorModel.hpp"

namespace orlan::simulate::life {

/// Lives beside a host that is played: compares what is heard of it with what the model says, and keeps an
/// eye of its own on what must never be.
class LifeWitness final : public phone::PhoneObserver {
 public:
  LifeWitness(const Scenario& scenario, std::function<Duration()> now);

  [[nodiscard]] Spectator spectator();

  /// When the scenario was played: the first thing that was wrong, if anything was.
  [[nodiscard]] std::optional<std::string> verdict();

  void consoleLine(std::string_view level, std::string_view message) override;
  void notificationScheduled(const NotificationRequest& request) override;
  void locationUpdates(std::string_view manager, bool running, double accuracy, double filter) override;
  void region(phone::RegionAction action, const CircularRegion& region) override;
  void fixes(std::span<const Location>) override { catchUp(); }
  void applicationSignal(ApplicationSignal, ApplicationState) override { catchUp(); }

 private:
  void watch(OrlanServices& services);
  void catchUp();
  void perform(const Action& action);
  void heard(const std::string& line);
  void mustBeQuiet(const char* before);
  void guardCrossing(const std::string& monitor, bool entering, const Crossing& crossing);
  void guardAnnouncement(const std::string& title);
  void wrong(const std::string& what);

  const Scenario& scenario_;
  std::function<Duration()> now_;
  MonitorModel model_;
  std::size_t next_ = 0;  // the step that comes next
  std::optional<std::string> wrong_;
  SubscriptionBag subscriptions_;

  // What must never be, without the model.
  std::string inCharge_;
  std::size_t regions_ = 0;
  std::map<std::string, bool>
      inside_;  // "foreground camp_1_10": entered last; the areas' campaigns unchanged
  std::map<std::string, TimePoint> announced_;
  std::string lastVerdict_;
  Duration clockOffset_{};
};

}  // namespace orlan::simulate::life
