// What a host asks of the library besides starting it.
#include "tools/orlan/simulate/Stage.hpp"
#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

Action readUpdateSegments(const Members& call, const Files&) {
  return [tags = call["segmentations"].strings()](Stage& stage) {
    stage.plugin().updateSegments(tags, stage.completion<bool>());
  };
}

Action readFetchConfiguration(const Members& call, const Files&) {
  return [force = call.boolean("forceRefresh", false)](Stage& stage) {
    stage.plugin().fetchConfiguration(force, stage.completion<OrlanConfiguration>());
  };
}

Action readSetCorrelationId(const Members& call, const Files&) {
  return [correlationId = call["correlationId"].string()](Stage& stage) {
    stage.plugin().setCorrelationId(correlationId);
  };
}

Action readTransform(const Members& call, const Files&) {
  return [text = call["text"].string()](Stage& stage) { stage.result(stage.plugin().transform(text)); };
}

Action readUpdateAPNsToken(const Members& call, const Files&) {
  return [token = readHex(call["token"])](Stage&) { OrlanPlugin::updateAPNsToken(token); };
}

Action readUpdateFCMToken(const Members& call, const Files&) {
  return [token = call["token"].string()](Stage&) { OrlanPlugin::updateFCMToken(token); };
}

void getCurrentConfiguration(Stage& stage) {
  const auto configuration = stage.plugin().getCurrentConfiguration();
  stage.result(configuration ? formOf(*configuration) : json::Value());
}

std::vector<StepKind> backendCalls() {
  return {
      {"updateSegments", {"segmentations"}, readUpdateSegments},
      {"fetchConfiguration", {"forceRefresh"}, readFetchConfiguration},
      plainCall("refreshPrivacyText",
                [](Stage& s) { s.plugin().refreshPrivacyText(s.completion<std::string>()); }),
      plainCall("getPrivacyText", [](Stage& s) { s.result(s.plugin().getPrivacyText()); }),
      plainCall("getCurrentConfiguration", getCurrentConfiguration),
      {"setCorrelationId", {"correlationId"}, readSetCorrelationId},
      plainCall("getCorrelationId", [](Stage& s) { s.result(s.plugin().getCorrelationId()); }),
      plainCall("clearCorrelationId", [](Stage& s) { s.plugin().clearCorrelationId(); }),
      plainCall("refetchGeofence", [](Stage& s) { s.plugin().refetchGeofence(); }),
      {"updateAPNsToken", {"token"}, readUpdateAPNsToken},
      {"updateFCMToken", {"token"}, readUpdateFCMToken},
  };
}

std::vector<StepKind> localCalls() {
  return {
      plainCall("requestLocationWhenInUse", [](Stage& s) { s.plugin().requestLocationWhenInUse(); }),
      plainCall("requestLocationAlways", [](Stage& s) { s.plugin().requestLocationAlways(); }),
      plainCall("requestPushPermission", [](Stage& s) { s.plugin().requestPushPermission(); }),
      plainCall("locationAuthorizationStatus",
                [](Stage& s) { s.result(s.plugin().locationAuthorizationStatusRaw()); }),
      plainCall("pushAuthorizationStatus",
                [](Stage& s) { s.result(s.plugin().pushAuthorizationStatusRaw()); }),
      {"transform", {"text"}, readTransform},
      plainCall("clearLogs", [](Stage& s) { s.plugin().clearLogs(); }),
      plainCall("getNotificationStats", [](Stage& s) { s.result(s.plugin().getNotificationStats()); }),
      plainCall("resetNotificationStats", [](Stage& s) { s.plugin().resetNotificationStats(); }),
  };
}

}  // namespace

std::vector<StepKind> publicCalls() {
  auto calls = backendCalls();
  for (auto& call : localCalls()) calls.push_back(std::move(call));
  return calls;
}

}  // namespace orlan::simulate
