// The host starts the library.
#include <algorithm>
#include <optional>

#include "orlan/backend/Config.hpp"
#include "tools/orlan/simulate/Stage.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

/// With which credentials a start is called; without any it takes them from the property list.
struct Credentials {
  struct AppScoped {
    std::string companyApiKey, appId, appApiKey, iosBundleId;
  };
  std::optional<std::string> apiKey;
  std::optional<AppScoped> app;
};

/// Which of the three starts it is follows from the arguments that are there.
Credentials readCredentials(const Members& call) {
  const std::initializer_list<std::string_view> appScoped = {"companyApiKey", "appId", "appApiKey",
                                                             "iosBundleId", "includeLegacyApiKeyHeader"};
  call.excludes("apiKey", appScoped);
  if (call.has("apiKey")) return {call["apiKey"].string(), std::nullopt};
  if (std::none_of(appScoped.begin(), appScoped.end(), [&](auto key) { return call.has(key); })) return {};
  return {std::nullopt, Credentials::AppScoped{call["companyApiKey"].string(), call["appId"].string(),
                                               call["appApiKey"].string(), call["iosBundleId"].string()}};
}

Config::Environment readEnvironment(const Item& env) {
  using Environment = Config::Environment;
  if (!env.isThere()) return Environment::staging;
  return env.oneOf<Environment>({{"development", Environment::development},
                                 {"nightly", Environment::nightly},
                                 {"staging", Environment::staging},
                                 {"production", Environment::production}});
}

OrlanPlugin::Delegate delegateIf(bool wanted, Stage& stage) {
  return wanted ? stage.host().delegate() : OrlanPlugin::Delegate();
}

Action readStart(const Members& call, const Files&) {
  std::vector<std::string> tags;
  call.into(tags, "segmentations", &Item::strings);
  return [credentials = readCredentials(call), env = readEnvironment(call["env"]), tags = std::move(tags),
          legacy = call.boolean("includeLegacyApiKeyHeader", true),
          wanted = call.boolean("delegate", true)](Stage& stage) {
    const auto delegate = delegateIf(wanted, stage);
    if (credentials.apiKey) return stage.plugin().start(*credentials.apiKey, env, tags, delegate);
    if (!credentials.app) return stage.plugin().start(env, tags, delegate);
    const auto& app = *credentials.app;
    stage.plugin().start(app.companyApiKey, app.appId, app.appApiKey, app.iosBundleId, env, tags, legacy,
                         delegate);
  };
}

Action readStartBridged(const Members& call, const Files&) {
  const Item tags = call["segmentations"];
  if (tags.isThere() && !tags.isNull() && tags.value().array() == nullptr) tags.expected("an array or null");
  const Item environment = call["environment"];
  return [credentials = readCredentials(call), env = environment.isThere() ? environment.integer() : 1,
          tags = tags.value(), wanted = call.boolean("delegate", true)](Stage& stage) {
    const auto delegate = delegateIf(wanted, stage);
    if (credentials.apiKey) return stage.plugin().startBridged(*credentials.apiKey, env, tags, delegate);
    if (!credentials.app) return stage.plugin().startBridged(env, tags, delegate);
    const auto& app = *credentials.app;
    stage.plugin().startBridged(app.companyApiKey, app.appId, app.appApiKey, app.iosBundleId, env, tags,
                                delegate);
  };
}

}  // namespace

std::vector<StepKind> startCalls() {
  return {
      {"start",
       {"env", "segmentations", "apiKey", "companyApiKey", "appId", "appApiKey", "iosBundleId",
        "includeLegacyApiKeyHeader", "delegate"},
       readStart},
      {"startBridged",
       {"environment", "segmentations", "apiKey", "companyApiKey", "appId", "appApiKey", "iosBundleId",
        "delegate"},
       readStartBridged},
  };
}

}  // namespace orlan::simulate
