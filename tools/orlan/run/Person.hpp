#pragma once

#include <functional>
#include <memory>
#include <string>

#include "phones/linux/LinuxPhone.hpp"
#include "tools/orlan/report/ReportCollector.hpp"
#include "tools/orlan/run/DetailsScreen.hpp"
#include "tools/orlan/run/KeyInput.hpp"
#include "tools/orlan/simulate/Scene.hpp"
#include "tools/orlan/simulate/Steps.hpp"

namespace orlan::run {

/// The person who holds the phone and walks: does what a terminal or a script says. Main thread; what it is
/// given outlives it.
class Person final : public simulate::Scene {
 public:
  /// While standing still time runs as it does in the world, else `speed` times as fast.
  Person(linuxphone::LinuxPhone& phone, OrlanServices& services, report::ReportCollector& collector,
         DetailsScreen& screen, double speed, std::function<void()> onQuit)
      : phone_(phone),
        services_(services),
        collector_(collector),
        screen_(screen),
        speed_(speed),
        onQuit_(std::move(onQuit)) {}

  void perform(const Command& command);

  /// A step of a script that has an `ActOfAPerson`.
  void perform(const simulate::Step& step);

  /// Whether the outcome of a step is still to come.
  [[nodiscard]] bool isWaiting() const { return waiting_.use_count() > 1; }

 private:
  [[nodiscard]] phone::ApplicationModel& application() override { return phone_.application(); }
  [[nodiscard]] phone::LocationHub& locations() override { return phone_.locations(); }
  [[nodiscard]] phone::LocalNotificationCenter& notifications() override { return phone_.notifications(); }
  [[nodiscard]] OrlanServices& services() override { return services_; }
  [[nodiscard]] std::optional<NotificationRequest> scheduled(std::size_t number) override;
  void tap(const NotificationResponse& response) override;
  [[nodiscard]] Outcome outcome() override;

  void standStill();
  void walkOn();
  void tapNumber(const std::string& number);

  linuxphone::LinuxPhone& phone_;
  OrlanServices& services_;
  report::ReportCollector& collector_;
  DetailsScreen& screen_;
  const double speed_;
  std::function<void()> onQuit_;
  std::string step_;  // the name of the one that is performed
  std::shared_ptr<const bool> waiting_ = std::make_shared<const bool>(true);  // shared with what waits
};

}  // namespace orlan::run
