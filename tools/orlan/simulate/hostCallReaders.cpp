#include <algorithm>

#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

/// Which of the three starts it is, by the arguments that are there.
StartChoice readChoice(const Members& call) {
  const std::initializer_list<std::string_view> appScoped = {"companyApiKey", "appId", "appApiKey",
                                                             "iosBundleId", "includeLegacyApiKeyHeader"};
  call.excludes("apiKey", appScoped);
  if (call.has("apiKey")) return ApiKey{call["apiKey"].string()};
  if (std::none_of(appScoped.begin(), appScoped.end(), [&](std::string_view key) { return call.has(key); })) {
    return FromPropertyList{};
  }
  return AppScoped{call["companyApiKey"].string(), call["appId"].string(), call["appApiKey"].string(),
                   call["iosBundleId"].string(), call.boolean("includeLegacyApiKeyHeader", true)};
}

Config::Environment readEnvironment(const Item& env) {
  using Environment = Config::Environment;
  return env.oneOf<Environment>({{"development", Environment::development},
                                 {"nightly", Environment::nightly},
                                 {"staging", Environment::staging},
                                 {"production", Environment::production}});
}

}  // namespace

Action readStart(const Item& item, const Files&) {
  const Members call = arguments(item, {"env", "segmentations", "apiKey", "companyApiKey", "appId",
                                        "appApiKey", "iosBundleId", "includeLegacyApiKeyHeader", "delegate"});
  step::Start start{readChoice(call)};
  if (call.has("env")) start.env = readEnvironment(call["env"]);
  if (call.has("segmentations")) start.segmentations = call["segmentations"].strings();
  start.delegate = call.boolean("delegate", true);
  return start;
}

Action readStartBridged(const Item& item, const Files&) {
  const Members call = arguments(item, {"environment", "segmentations", "apiKey", "companyApiKey", "appId",
                                        "appApiKey", "iosBundleId", "delegate"});
  step::StartBridged start{readChoice(call)};
  if (call.has("environment")) start.environment = call["environment"].integer();
  if (const Item tags = call["segmentations"]; tags.isThere()) {
    if (!tags.isNull() && tags.value().array() == nullptr) tags.expected("an array or null");
    start.segmentations = tags.value();
  }
  start.delegate = call.boolean("delegate", true);
  return start;
}

Action readGetNotificationStats(const Item& item, const Files&) {
  (void)arguments(item, {});
  return step::GetNotificationStats{};
}

Action readResetNotificationStats(const Item& item, const Files&) {
  (void)arguments(item, {});
  return step::ResetNotificationStats{};
}

Action readClearCooldown(const Item& item, const Files&) {
  const Item monitor = arguments(item, {"monitor"})["monitor"];
  return step::ClearCooldown{monitor.oneOf<bool>({{"foreground", false}, {"background", true}})};
}

}  // namespace orlan::simulate
