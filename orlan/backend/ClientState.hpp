#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/backend/Config.hpp"
#include "orlan/backend/TransmissionAppCredentials.hpp"

namespace orlan {

/// What the client remembers for the length of the process: where it speaks to, with which credentials, and
/// the device's push tokens. Any thread; everything is read and written as a copy.
class ClientState {
 public:
  explicit ClientState(BaseUrls urls);

  [[nodiscard]] const BaseUrls& urls() const { return urls_; }

  [[nodiscard]] Config::Environment env() const { return env_; }
  void setEnv(Config::Environment environment) { env_ = environment; }

  /// Base URL and path, as they are.
  [[nodiscard]] std::string platformUrl(Config::Environment environment, std::string_view path) const;
  [[nodiscard]] std::string platformUrl(std::string_view path) const { return platformUrl(env_, path); }

  [[nodiscard]] bool isAuthenticated() const { return authenticated_; }
  void setAuthenticated() { authenticated_ = true; }

  [[nodiscard]] std::optional<TransmissionAppCredentials> credentials() const;
  void setCredentials(std::optional<TransmissionAppCredentials> credentials);

  void setAPNsToken(std::string hexadecimal);
  void setFCMToken(std::string token);

  /// The FCM token, else the APNs token, else "pending".
  [[nodiscard]] std::string currentPushToken() const;

 private:
  const BaseUrls urls_;
  std::atomic<Config::Environment> env_ = Config::Environment::staging;
  std::atomic<bool> authenticated_ = false;

  mutable std::mutex mutex_;
  std::optional<TransmissionAppCredentials> credentials_;  // guarded by mutex_, like the tokens
  std::string pushToken_;                                  // APNs
  std::string fcmToken_;
};

/// Stands in for a push token until the first one is known.
inline constexpr std::string_view kNoPushToken = "pending";

}  // namespace orlan
