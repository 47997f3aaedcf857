// What a host asks of the library besides starting it.
#include "tools/orlan/simulate/Caller.hpp"
#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

Action readUpdateSegments(const Members& call, const Files&) {
  return step::Call{[tags = call["segmentations"].strings()](Caller& caller) {
    caller.plugin().updateSegments(tags, caller.completion<bool>());
  }};
}

Action readFetchConfiguration(const Members& call, const Files&) {
  return step::Call{[force = call.boolean("forceRefresh", false)](Caller& caller) {
    caller.plugin().fetchConfiguration(force, caller.completion<OrlanConfiguration>());
  }};
}

Action readSetCorrelationId(const Members& call, const Files&) {
  return step::Call{[correlationId = call["correlationId"].string()](Caller& caller) {
    caller.plugin().setCorrelationId(correlationId);
  }};
}

Action readTransform(const Members& call, const Files&) {
  return step::Call{
      [text = call["text"].string()](Caller& caller) { caller.result(caller.plugin().transform(text)); }};
}

Action readUpdateAPNsToken(const Members& call, const Files&) {
  return step::Call{[token = readHex(call["token"])](Caller&) { OrlanPlugin::updateAPNsToken(token); }};
}

Action readUpdateFCMToken(const Members& call, const Files&) {
  return step::Call{[token = call["token"].string()](Caller&) { OrlanPlugin::updateFCMToken(token); }};
}

void getCurrentConfiguration(Caller& caller) {
  const auto configuration = caller.plugin().getCurrentConfiguration();
  caller.result(configuration ? formOf(*configuration) : json::Value());
}

std::vector<StepKind> backendCalls() {
  return {
      {"updateSegments", {"segmentations"}, readUpdateSegments},
      {"fetchConfiguration", {"forceRefresh"}, readFetchConfiguration},
      plainCall("refreshPrivacyText",
                [](Caller& c) { c.plugin().refreshPrivacyText(c.completion<std::string>()); }),
      plainCall("getPrivacyText", [](Caller& c) { c.result(c.plugin().getPrivacyText()); }),
      plainCall("getCurrentConfiguration", getCurrentConfiguration),
      {"setCorrelationId", {"correlationId"}, readSetCorrelationId},
      plainCall("getCorrelationId", [](Caller& c) { c.result(c.plugin().getCorrelationId()); }),
      plainCall("clearCorrelationId", [](Caller& c) { c.plugin().clearCorrelationId(); }),
      plainCall("refetchGeofence", [](Caller& c) { c.plugin().refetchGeofence(); }),
      {"updateAPNsToken", {"token"}, readUpdateAPNsToken},
      {"updateFCMToken", {"token"}, readUpdateFCMToken},
  };
}

std::vector<StepKind> localCalls() {
  return {
      plainCall("requestLocationWhenInUse", [](Caller& c) { c.plugin().requestLocationWhenInUse(); }),
      plainCall("requestLocationAlways", [](Caller& c) { c.plugin().requestLocationAlways(); }),
      plainCall("requestPushPermission", [](Caller& c) { c.plugin().requestPushPermission(); }),
      plainCall("locationAuthorizationStatus",
                [](Caller& c) { c.result(c.plugin().locationAuthorizationStatusRaw()); }),
      plainCall("pushAuthorizationStatus",
                [](Caller& c) { c.result(c.plugin().pushAuthorizationStatusRaw()); }),
      {"transform", {"text"}, readTransform},
      plainCall("clearLogs", [](Caller& c) { c.plugin().clearLogs(); }),
      plainCall("getNotificationStats", [](Caller& c) { c.result(c.plugin().getNotificationStats()); }),
      plainCall("resetNotificationStats", [](Caller& c) { c.plugin().resetNotificationStats(); }),
  };
}

}  // namespace

std::vector<StepKind> publicCalls() {
  auto calls = backendCalls();
  for (auto& call : localCalls()) calls.push_back(std::move(call));
  return calls;
}

}  // namespace orlan::simulate
