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

/// The base URLs of both backend families, one an environment. An endpoint's URL is base + path, as they are.
struct BaseUrls {
  using Family = std::array<std::string, 4>;  // in the order of `allCases<Config::Environment>()`
  Family platform;
  Family transmission;

  /// The built-in hosts under the reserved domain `.example`, which answer nobody.
  static BaseUrls builtIn();

  /// Replaces one address after checking it: an absolute http or https URL with a host; for the platform
  /// family and the transmission layer's `development` and `production` without path or trailing slash, for
  /// its `nightly` with the path "/api/", for its `staging` with the path "/api".
  Result<void> setPlatform(Config::Environment environment, std::string url);
  Result<void> setTransmission(Config::Environment environment, std::string url);

  [[nodiscard]] const std::string& platformUrl(Config::Environment environment) const;
  [[nodiscard]] const std::string& transmissionUrl(Config::Environment environment) const;
};

}  // namespace orlan
