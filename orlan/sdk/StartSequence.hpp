#pragma once

#include <memory>
#include <optional>
#include <string>

#include "orlan/base/Subscription.hpp"
#include "orlan/platform/Platform.hpp"
#include "orlan/sdk/AppStateMonitoring.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/OrlanServices.hpp"

namespace orlan {

/// Brings the library up: credentials, registration, then the services that suit the application's state.
/// Main thread. A later start replaces an earlier one, whether that has ended or not.
class StartSequence {
 public:
  using Delegate = OrlanPlugin::Delegate;
  using Segmentations = OrlanPlugin::Segmentations;

  StartSequence(OrlanPlugin& plugin, const Platform& phone, OrlanServices& services,
                AppStateMonitoring& monitoring);

  void withApiKey(const std::string& apiKey, Config::Environment env, const Segmentations& segmentations,
                  const Delegate& delegate);
  void withHostCredentials(Config::Environment env, const Segmentations& segmentations,
                           const Delegate& delegate);
  void withAppCredentials(TransmissionAppCredentials credentials, Config::Environment env,
                          const Segmentations& segmentations, const Delegate& delegate);

  /// The company API key in force; empty before the first start.
  [[nodiscard]] const std::string& storedApiKey() const { return storedApiKey_; }
  [[nodiscard]] Config::Environment storedEnv() const { return storedEnv_; }

 private:
  [[nodiscard]] std::optional<TransmissionAppCredentials> fromPropertyList() const;
  void adopt(const std::string& key, Config::Environment env,
             const std::optional<TransmissionAppCredentials>& credentials);
  void registerDevice(const Segmentations& segmentations);
  void watchPermissions();
  void registered(const APIService::AuthPayload& identity);
  void startServices();
  void fail(const Delegate& delegate, const std::string& line, const Error& error);

  OrlanPlugin& plugin_;
  Platform phone_;
  OrlanServices& services_;
  AppStateMonitoring& monitoring_;
  Logger& logger_;

  std::string storedApiKey_;
  Config::Environment storedEnv_ = Config::Environment::staging;
  std::optional<TransmissionAppCredentials> pendingTransmissionAuthOverride_;
  Delegate delegate_;
  SubscriptionBag bag_;  // what this start listens to; ends with the next start
};

}  // namespace orlan
