#include "orlan/backend/ClientState.hpp"

#include <utility>

namespace orlan {

ClientState::ClientState(BaseUrls urls) : urls_(std::move(urls)) {}

std::string ClientState::platformUrl(Config::Environment environment, std::string_view path) const {
  return std::string(urls_.platformUrl(environment)).append(path);
}

std::optional<TransmissionAppCredentials> ClientState::credentials() const {
  const std::lock_guard lock(mutex_);
  return credentials_;
}

void ClientState::setCredentials(std::optional<TransmissionAppCredentials> credentials) {
  const std::lock_guard lock(mutex_);
  credentials_ = std::move(credentials);
}

void ClientState::setAPNsToken(std::string hexadecimal) {
  const std::lock_guard lock(mutex_);
  pushToken_ = std::move(hexadecimal);
}

void ClientState::setFCMToken(std::string token) {
  const std::lock_guard lock(mutex_);
  fcmToken_ = std::move(token);
}

std::string ClientState::currentPushToken() const {
  const std::lock_guard lock(mutex_);
  if (!fcmToken_.empty()) return fcmToken_;
  if (!pushToken_.empty()) return pushToken_;
  return std::string(kNoPushToken);
}

}  // namespace orlan
