#pragma once

#include "orlan/platform/Platform.hpp"
#include "orlan/sdk/AppStateMonitoring.hpp"
#include "orlan/sdk/BackendOperations.hpp"
#include "orlan/sdk/NotificationStats.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/OrlanServices.hpp"
#include "orlan/sdk/StartSequence.hpp"
#include "orlan/sdk/SurveyOperations.hpp"

namespace orlan {

/// What the facade is made of; only its own source files look inside.
struct OrlanPlugin::Parts {
  Parts(OrlanPlugin& plugin, const Platform& platform, OrlanServices& given)
      : phone(platform),
        services(given),
        logger(given.logger),
        monitoring({phone.clock, phone.application, phone.locations, given.logger, given.foregroundMonitor,
                    given.backgroundMonitor},
                   [this] { reportStatistics(); }),
        starting(plugin, platform, given, monitoring),
        asking(starting, given.api, given.logger),
        surveys(starting, given.api, phone.store, given.logger) {
    notificationStats.lastReportTime = phone.clock.now();
  }

  void reportStatistics();

  Platform phone;
  OrlanServices& services;
  Logger& logger;
  NotificationStats notificationStats;
  json::Object telemetry;
  AppStateMonitoring monitoring;
  StartSequence starting;
  BackendOperations asking;
  SurveyOperations surveys;
};

}  // namespace orlan
