#include "tools/orlan/simulate/stepTable.hpp"

#include <array>

#include "tools/orlan/simulate/readers.hpp"

namespace orlan::simulate {
namespace {

Action readFixes(const Item& step, const Files&) {
  const Members members = arguments(step, {"latitude", "longitude", "accuracy", "fixes"});
  members.excludes("fixes", {"latitude", "longitude", "accuracy"});
  step::Fixes batch;
  if (!members.has("fixes")) {
    batch.fixes.push_back(readFix(members));
    return batch;
  }
  for (const Item& fix : members["fixes"].elements()) batch.fixes.push_back(readFix(fix.members(fixKeys)));
  return batch;
}

Action readApplication(const Item& step, const Files&) {
  const Members members = arguments(step, {"to", "signal"});
  members.excludes("signal", {"to"});
  if (!members.has("signal")) return step::MoveApplication{readApplicationState(members["to"])};
  return step::RaiseSignal{members["signal"].oneOf<ApplicationSignal>(
      {{"didEnterBackground", ApplicationSignal::didEnterBackground},
       {"willEnterForeground", ApplicationSignal::willEnterForeground},
       {"didBecomeActive", ApplicationSignal::didBecomeActive},
       {"willResignActive", ApplicationSignal::willResignActive}})};
}

Action readStore(const Item& step, const Files&) {
  const Members members = arguments(step, {"key", "value"});
  step::ChangeStore change{members["key"].string(), std::nullopt};
  if (const Item value = members["value"]; !value.isNull()) {
    if (!value.isThere()) value.expected("a value, or null to remove the key");
    change.value = readStorable(value);
  }
  return change;
}

Action readFile(const Item& step, const Files&) {
  const Members members = arguments(step, {"name", "text"});
  step::ChangeFile change{readFileName(members["name"]), std::nullopt};
  if (const Item text = members["text"]; !text.isNull()) change.text = text.string();
  return change;
}

Action readEnterRegion(const Item& step, const Files&) {
  return step::CrossRegion{arguments(step, {"identifier"})["identifier"].string(), true};
}

Action readExitRegion(const Item& step, const Files&) {
  return step::CrossRegion{arguments(step, {"identifier"})["identifier"].string(), false};
}

Action readRelaunch(const Item& step, const Files&) {
  step::Relaunch relaunch;
  const Item state = arguments(step, {"application"})["application"];
  if (state.isThere()) relaunch.application = readApplicationState(state);
  return relaunch;
}

Action readWalk(const Item& step, const Files& files) {
  return readTrack(arguments(step, {"points", "file", "speed", "interval", "accuracy"}), files);
}

Action readLocationStatus(const Item& step, const Files&) {
  return step::SetLocationAuthorization{readLocationAuthorization(arguments(step, {"to"})["to"])};
}

Action readNotificationStatus(const Item& step, const Files&) {
  return step::SetNotificationAuthorization{readNotificationAuthorization(arguments(step, {"to"})["to"])};
}

Action readClock(const Item& step, const Files&) {
  return step::SetClock{arguments(step, {"to"}).dateTime("to")};
}

Action readReadFile(const Item& step, const Files&) {
  return step::ReadFile{readFileName(arguments(step, {"name"})["name"])};
}

Action readLocationError(const Item& step, const Files&) {
  return step::FailLocation{arguments(step, {"description"})["description"].string()};
}

Action readStorage(const Item& step, const Files&) {
  return step::FailStorage{
      arguments(step, {"fail"})["fail"].oneOf<sim::StorageFault>({{"writes", sim::StorageFault::writes},
                                                                  {"reads", sim::StorageFault::reads},
                                                                  {"none", sim::StorageFault::none}})};
}

/// Without a reader a step waits for the part of the library that it is about.
constexpr auto kinds = std::to_array<StepKind>({
    {"start", readStart},
    {"startBridged", readStartBridged},
    {"updateSegments", nullptr},
    {"fetchConfiguration", nullptr},
    {"refreshPrivacyText", nullptr},
    {"getPrivacyText", nullptr},
    {"getCurrentConfiguration", nullptr},
    {"setCorrelationId", nullptr},
    {"getCorrelationId", nullptr},
    {"clearCorrelationId", nullptr},
    {"refetchGeofence", nullptr},
    {"requestLocationWhenInUse", nullptr},
    {"requestLocationAlways", nullptr},
    {"requestPushPermission", nullptr},
    {"locationAuthorizationStatus", nullptr},
    {"pushAuthorizationStatus", nullptr},
    {"transform", nullptr},
    {"clearLogs", nullptr},
    {"getNotificationStats", readGetNotificationStats},
    {"resetNotificationStats", readResetNotificationStats},
    {"updateAPNsToken", nullptr},
    {"updateFCMToken", nullptr},
    {"submitSurveyResponse", nullptr},
    {"trackSurveyEvent", nullptr},
    {"trackMediaView", nullptr},
    {"trackCTAEngagement", nullptr},
    {"sendTestNotification", nullptr},
    {"sendTestNotificationWithPayload", nullptr},
    {"sendFirebaseStyleTestNotification", nullptr},
    {"clearLatest", nullptr},
    {"setNotificationDelegate", nullptr},
    {"clearCooldown", readClearCooldown},
    {"fix", readFixes},
    {"track", readWalk},
    {"application", readApplication},
    {"locationAuthorization", readLocationStatus},
    {"notificationAuthorization", readNotificationStatus},
    {"enterRegion", readEnterRegion},
    {"exitRegion", readExitRegion},
    {"present", nullptr},
    {"tap", nullptr},
    {"relaunch", readRelaunch},
    {"clock", readClock},
    {"store", readStore},
    {"file", readFile},
    {"readFile", readReadFile},
    {"locationError", readLocationError},
    {"storage", readStorage},
});

}  // namespace

std::span<const StepKind> stepKinds() {
  return kinds;
}

}  // namespace orlan::simulate
