// What happens to the phone.
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

Action readFixes(const Members& step, const Files&) {
  step.excludes("fixes", {"latitude", "longitude", "accuracy"});
  step::Fixes batch;
  if (!step.has("fixes")) {
    batch.fixes.push_back(readFix(step));
    return batch;
  }
  for (const Item& fix : step["fixes"].elements()) batch.fixes.push_back(readFix(fix.members(keys::fix)));
  return batch;
}

Action readApplication(const Members& step, const Files&) {
  step.excludes("signal", {"to"});
  if (!step.has("signal")) return step::MoveApplication{readApplicationState(step["to"])};
  return step::RaiseSignal{step["signal"].oneOf<ApplicationSignal>(
      {{"didEnterBackground", ApplicationSignal::didEnterBackground},
       {"willEnterForeground", ApplicationSignal::willEnterForeground},
       {"didBecomeActive", ApplicationSignal::didBecomeActive},
       {"willResignActive", ApplicationSignal::willResignActive}})};
}

Action readStore(const Members& step, const Files&) {
  step::ChangeStore change{step["key"].string(), std::nullopt};
  if (const Item value = step["value"]; !value.isNull()) {
    if (!value.isThere()) value.expected("a value, or null to remove the key");
    change.value = readStorable(value);
  }
  return change;
}

Action readFile(const Members& step, const Files&) {
  step::ChangeFile change{readFileName(step["name"]), std::nullopt};
  if (const Item text = step["text"]; !text.isNull()) change.text = text.string();
  return change;
}

Action readEnterRegion(const Members& step, const Files&) {
  return step::CrossRegion{step["identifier"].string(), true};
}

Action readExitRegion(const Members& step, const Files&) {
  return step::CrossRegion{step["identifier"].string(), false};
}

Action readRelaunch(const Members& step, const Files&) {
  step::Relaunch relaunch;
  const Item state = step["application"];
  if (state.isThere()) relaunch.application = readApplicationState(state);
  return relaunch;
}

Action readWalk(const Members& step, const Files& files) {
  return readTrack(step, files);
}

Action readLocationStatus(const Members& step, const Files&) {
  return step::SetLocationAuthorization{readLocationAuthorization(step["to"])};
}

Action readNotificationStatus(const Members& step, const Files&) {
  return step::SetNotificationAuthorization{readNotificationAuthorization(step["to"])};
}

Action readClock(const Members& step, const Files&) {
  return step::SetClock{step.dateTime("to")};
}

Action readReadFile(const Members& step, const Files&) {
  return step::ReadFile{readFileName(step["name"])};
}

Action readLocationError(const Members& step, const Files&) {
  return step::FailLocation{step["description"].string()};
}

Action readStorage(const Members& step, const Files&) {
  return step::FailStorage{step["fail"].oneOf<sim::StorageFault>({{"writes", sim::StorageFault::writes},
                                                                  {"reads", sim::StorageFault::reads},
                                                                  {"none", sim::StorageFault::none}})};
}

Action readClearCooldown(const Members& step, const Files&) {
  return step::ClearCooldown{step["monitor"].oneOf<bool>({{"foreground", false}, {"background", true}})};
}

}  // namespace

std::vector<StepKind> phoneSteps() {
  return {
      {"clearCooldown", {"monitor"}, readClearCooldown},
      {"fix", {"latitude", "longitude", "accuracy", "fixes"}, readFixes},
      {"track", {"points", "file", "speed", "interval", "accuracy"}, readWalk},
      {"application", {"to", "signal"}, readApplication},
      {"locationAuthorization", {"to"}, readLocationStatus},
      {"notificationAuthorization", {"to"}, readNotificationStatus},
      {"enterRegion", {"identifier"}, readEnterRegion},
      {"exitRegion", {"identifier"}, readExitRegion},
      {"relaunch", {"application"}, readRelaunch},
      {"clock", {"to"}, readClock},
      {"store", {"key", "value"}, readStore},
      {"file", {"name", "text"}, readFile},
      {"readFile", {"name"}, readReadFile},
      {"locationError", {"description"}, readLocationError},
      {"storage", {"fail"}, readStorage},
  };
}

}  // namespace orlan::simulate
