#pragma once

#include <cstdint>
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
/// Main thread. A later start replaces an earlier one, whether that has ended or not: a host may start anew
/// or end the library from inside whatever a start calls, and nothing further of the start that was under way
/// happens then.
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
  using Number = std::uint64_t;

  void registerDevice(Number start, const Segmentations& segmentations);
  void watchPermissions();
  void registered(Number start, const APIService::AuthPayload& identity);
  [[nodiscard]] bool isCurrent(Number start) const;
  void fail(const Delegate& delegate, const std::string& line, const Error& error);

  OrlanPlugin& plugin_;
  Platform phone_;
  OrlanServices& services_;
  AppStateMonitoring& monitoring_;
  Logger& logger_;

  Number latest_ = 0;
  std::string storedApiKey_;
  Config::Environment storedEnv_ = Config::Environment::staging;
  std::optional<TransmissionAppCredentials> pendingTransmissionAuthOverride_;
  Delegate delegate_;
  SubscriptionBag bag_;  // what this start listens to; ends with the next start
};

}  // namespace orlan
