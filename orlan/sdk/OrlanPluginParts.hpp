#pragma once

#include <string_view>

#include "orlan/platform/Platform.hpp"
#include "orlan/sdk/AppStateMonitoring.hpp"
#include "orlan/sdk/NotificationStats.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/OrlanServices.hpp"
#include "orlan/sdk/PendingAnswers.hpp"
#include "orlan/sdk/StartSequence.hpp"

namespace orlan {

/// What the facade is made of; only its own source files look inside.
struct OrlanPlugin::Parts {
  Parts(OrlanPlugin& plugin, const Platform& platform, OrlanServices& given)
      : phone(platform),
        services(given),
        logger(given.logger),
        monitoring(platform, given, [this] { reportStatistics(); }),
        starting(plugin, platform, given, monitoring),
        pending(given.logger) {
    notificationStats.lastReportTime = phone.clock.now();
  }

  void reportStatistics();
  void count(std::string_view monitor, std::int64_t NotificationStats::*counter, std::string_view activation);

  /// Whether `operation` was refused, with a line in the log, because there has been no start.
  template <class T>
  bool refused(std::string_view operation, const Completion<T>& completion);

  /// What both survey operations send, once it is known who is asking about which notification.
  [[nodiscard]] Result<SurveyResponseRequest> surveyRequest(std::string_view operation,
                                                            const std::string& notificationId,
                                                            const std::optional<std::string>& locationId);
  [[nodiscard]] Result<void> checkAnswers(const std::vector<SurveyAnswer>& answers);

  Platform phone;
  OrlanServices& services;
  Logger& logger;
  NotificationStats notificationStats;
  json::Object telemetry;
  AppStateMonitoring monitoring;
  StartSequence starting;
  PendingAnswers pending;
};

}  // namespace orlan
