#include "orlan/backend/OrlanConfiguration.hpp"

#include <utility>

#include "orlan/base/Fields.hpp"

namespace orlan {
namespace {

/// The JSON form, in which everything may be missing.
struct Members {
  std::optional<std::int64_t> notificationsCount;
  std::optional<std::int64_t> daysCount;
  std::optional<std::int64_t> batteryCount;
  std::optional<std::string> privacyText;

  OrlanConfiguration configuration() && {
    return {notificationsCount.value_or(0), daysCount.value_or(0), batteryCount.value_or(0),
            std::move(privacyText).value_or("")};
  }
};

struct Wrapper {
  std::optional<Members> configuration;
};

}  // namespace

template <>
struct Fields<Members> {
  using R = Members;
  static constexpr std::tuple list{field("notificationsCount", &R::notificationsCount),
                                   field("daysCount", &R::daysCount), field("batteryCount", &R::batteryCount),
                                   field("privacyText", &R::privacyText)};
};

template <>
struct Fields<Wrapper> {
  using R = Wrapper;
  static constexpr std::tuple list{field("configuration", &R::configuration)};
};

const OrlanConfiguration& OrlanConfiguration::defaults() {
  static const OrlanConfiguration none;
  return none;
}

Result<OrlanConfiguration> OrlanConfiguration::decode(std::string_view text) {
  auto members = json::decodeText<Members>(text);
  if (!members) return Unexpected(members.error());
  return std::move(*members).configuration();
}

json::Value OrlanConfiguration::encode() const {
  return json::encode(Members{notificationsCount, daysCount, batteryCount, privacyText});
}

Result<ConfigurationResponse> ConfigurationResponse::decode(std::string_view text) {
  auto wrapper = json::decodeText<Wrapper>(text);
  if (!wrapper) return Unexpected(wrapper.error());
  ConfigurationResponse response;
  if (wrapper->configuration) response.configuration = std::move(*wrapper->configuration).configuration();
  return response;
}

}  // namespace orlan
