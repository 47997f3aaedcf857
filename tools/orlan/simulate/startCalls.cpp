// The host starts the library.
#include <algorithm>
#include <variant>

#include "orlan/backend/Config.hpp"
#include "tools/orlan/simulate/Caller.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

/// With which credentials a start is called: one of its three forms.
struct AppScoped {
  std::string companyApiKey;
  std::string appId;
  std::string appApiKey;
  std::string iosBundleId;
};
struct ApiKey {
  std::string apiKey;
};
struct FromPropertyList {};
using Choice = std::variant<FromPropertyList, ApiKey, AppScoped>;

template <class... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

/// Which of the three starts it is, by the arguments that are there.
Choice readChoice(const Members& call) {
  const std::initializer_list<std::string_view> appScoped = {"companyApiKey", "appId", "appApiKey",
                                                             "iosBundleId", "includeLegacyApiKeyHeader"};
  call.excludes("apiKey", appScoped);
  if (call.has("apiKey")) return ApiKey{call["apiKey"].string()};
  if (std::none_of(appScoped.begin(), appScoped.end(), [&](std::string_view key) { return call.has(key); })) {
    return FromPropertyList{};
  }
  return AppScoped{call["companyApiKey"].string(), call["appId"].string(), call["appApiKey"].string(),
                   call["iosBundleId"].string()};
}

Config::Environment readEnvironment(const Item& env) {
  using Environment = Config::Environment;
  if (!env.isThere()) return Environment::staging;
  return env.oneOf<Environment>({{"development", Environment::development},
                                 {"nightly", Environment::nightly},
                                 {"staging", Environment::staging},
                                 {"production", Environment::production}});
}

OrlanPlugin::Delegate delegateIf(bool wanted, Caller& caller) {
  return wanted ? caller.host().delegate() : OrlanPlugin::Delegate();
}

Action readStart(const Members& call, const Files&) {
  const Item tags = call["segmentations"];
  return step::Call{[choice = readChoice(call), env = readEnvironment(call["env"]),
                     segmentations = tags.isThere() ? tags.strings() : std::vector<std::string>(),
                     legacy = call.boolean("includeLegacyApiKeyHeader", true),
                     wanted = call.boolean("delegate", true)](Caller& caller) {
    OrlanPlugin& plugin = caller.plugin();
    const auto delegate = delegateIf(wanted, caller);
    std::visit(Overloaded{[&](const FromPropertyList&) { plugin.start(env, segmentations, delegate); },
                          [&](const ApiKey& key) { plugin.start(key.apiKey, env, segmentations, delegate); },
                          [&](const AppScoped& app) {
                            plugin.start(app.companyApiKey, app.appId, app.appApiKey, app.iosBundleId, env,
                                         segmentations, legacy, delegate);
                          }},
               choice);
  }};
}

Action readStartBridged(const Members& call, const Files&) {
  const Item tags = call["segmentations"];
  if (tags.isThere() && !tags.isNull() && tags.value().array() == nullptr) tags.expected("an array or null");
  const Item environment = call["environment"];
  return step::Call{[choice = readChoice(call), env = environment.isThere() ? environment.integer() : 1,
                     segmentations = tags.value(), wanted = call.boolean("delegate", true)](Caller& caller) {
    OrlanPlugin& plugin = caller.plugin();
    const auto delegate = delegateIf(wanted, caller);
    std::visit(
        Overloaded{[&](const FromPropertyList&) { plugin.startBridged(env, segmentations, delegate); },
                   [&](const ApiKey& key) { plugin.startBridged(key.apiKey, env, segmentations, delegate); },
                   [&](const AppScoped& app) {
                     plugin.startBridged(app.companyApiKey, app.appId, app.appApiKey, app.iosBundleId, env,
                                         segmentations, delegate);
                   }},
        choice);
  }};
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
