#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "orlan/base/Enumeration.hpp"
#include "orlan/base/Result.hpp"

namespace orlan {

/// Namespace record of the backend's environments.
struct Config {
  enum class Environment { development, nightly, staging, production };
};

template <>
struct RawValues<Config::Environment> {
  static constexpr std::array table{
      std::pair{Config::Environment::development, std::string_view("development")},
      std::pair{Config::Environment::nightly, std::string_view("nightly")},
      std::pair{Config::Environment::staging, std::string_view("staging")},
      std::pair{Config::Environment::production, std::string_view("production")}};
};

/// The environments as integers, for hosts behind a language bridge. Their order differs from `Config`'s.
enum class OrlanEnvironment : std::int64_t { development = 0, staging = 1, production = 2, nightly = 3 };

template <>
struct RawValues<OrlanEnvironment> {
  static constexpr std::array table{std::pair{OrlanEnvironment::development, std::int64_t{0}},
                                    std::pair{OrlanEnvironment::staging, std::int64_t{1}},
                                    std::pair{OrlanEnvironment::production, std::int64_t{2}},
                                    std::pair{OrlanEnvironment::nightly, std::int64_t{3}}};
};

/// By meaning, not by position. Any integer outside 0 to 3 selects `staging`.
[[nodiscard]] Config::Environment environmentFromBridged(std::int64_t raw);

/// The base URLs of both backend families, one an environment, each checked when it is set: what is in here
/// forms a URL with every endpoint's path put behind it as it is.
class BaseUrls {
 public:
  /// The built-in hosts under the reserved domain `.example`, which answer nobody.
  static BaseUrls builtIn();

  /// Replaces one address, or says why not and keeps the old one. An address is "https://HOST" or
  /// "https://HOST:PORT"; plain http is for the loopback only. Nothing stands behind it, not even a slash,
  /// but for the transmission layer's `nightly`, which has the path "/api/", and its `staging`, which has
  /// "/api".
  Result<void> setPlatform(Config::Environment environment, std::string url);
  Result<void> setTransmission(Config::Environment environment, std::string url);

  [[nodiscard]] const std::string& platformUrl(Config::Environment environment) const;
  [[nodiscard]] const std::string& transmissionUrl(Config::Environment environment) const;

 private:
  BaseUrls() = default;

  // In the order of `allCases<Config::Environment>()`.
  std::array<std::string, 4> platform_{
      "https://platform.development.orlan.example", "https://platform.nightly.orlan.example",
      "https://platform.staging.orlan.example", "https://platform.orlan.example"};
  std::array<std::string, 4> transmission_{
      "https://transmission.development.orlan.example", "https://transmission.nightly.orlan.example/api/",
      "https://transmission.staging.orlan.example/api", "https://transmission.orlan.example"};
};

}  // namespace orlan
