// What happens to the phone.
#include "tools/orlan/simulate/Stage.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

Action readFixes(const Members& step, const Files&) {
  step.excludes("fixes", {"latitude", "longitude", "accuracy"});
  std::vector<Fix> fixes;
  if (step.has("fixes")) {
    for (const Item& fix : step["fixes"].elements()) fixes.push_back(readFix(fix.members(keys::fix)));
  } else {
    fixes.push_back(readFix(step));
  }
  return [fixes](Stage& stage) {
    std::vector<Location> batch;
    for (const Fix& fix : fixes) batch.push_back(stage.phone().fixAt(fix.coordinate, fix.accuracy));
    stage.phone().locations().deliver(batch);
  };
}

Action readApplication(const Members& step, const Files&) {
  step.excludes("signal", {"to"});
  if (step.has("signal")) {
    return ActOfAPerson([signal = step["signal"].oneOf<ApplicationSignal>(applicationSignals)](Scene& scene) {
      scene.application().raise(signal);
    });
  }
  return ActOfAPerson(
      [to = readApplicationState(step["to"])](Scene& scene) { scene.application().moveTo(to); });
}

Action readLocationStatus(const Members& step, const Files&) {
  return ActOfAPerson(
      [to = readLocationAuthorization(step["to"])](Scene& scene) { scene.locations().setAuthorization(to); });
}

Action readNotificationStatus(const Members& step, const Files&) {
  return ActOfAPerson([to = readNotificationAuthorization(step["to"])](Scene& scene) {
    scene.notifications().setAuthorization(to);
  });
}

StepKind regionStep(std::string_view name, void (phone::LocationHub::*cross)(std::string_view)) {
  return {name, {"identifier"}, [cross](const Members& step, const Files&) -> Action {
            return [cross, identifier = step["identifier"].string()](Stage& stage) {
              (stage.phone().locations().*cross)(identifier);
            };
          }};
}

Action readRelaunch(const Members& step, const Files&) {
  ApplicationState state = ApplicationState::active;
  step.into(state, "application", readApplicationState);
  return [state](Stage& stage) { stage.relaunch(state); };
}

Action readClock(const Members& step, const Files&) {
  return [to = step.dateTime("to")](Stage& stage) { stage.phone().clock().set(to); };
}

Action readStore(const Members& step, const Files&) {
  std::string key = step["key"].string();
  const Item value = step["value"];
  if (!value.isThere()) value.expected("a value, or null to remove the key");
  return [key = std::move(key), stored = value.isNull() ? json::Value() : readStorable(value)](Stage& stage) {
    stage.phone().store().change(key, stored);
  };
}

Action readFile(const Members& step, const Files&) {
  std::string name = readFileName(step["name"]);
  const Item text = step["text"];
  return [name = std::move(name), text = text.isNull() ? std::nullopt : std::optional(text.string())](
             Stage& stage) { stage.phone().files().change(name, text); };
}

Action readReadFile(const Members& step, const Files&) {
  return [name = readFileName(step["name"])](Stage& stage) {
    stage.result(stage.phone().files().content(name));
  };
}

Action readLocationError(const Members& step, const Files&) {
  return [error = Error{"LocationService", -1, step["description"].string()}](Stage& stage) {
    stage.phone().locations().fail(error);
  };
}

Action readStorage(const Members& step, const Files&) {
  using sim::StorageFault;
  const auto fault = step["fail"].oneOf<StorageFault>(
      {{"writes", StorageFault::writes}, {"reads", StorageFault::reads}, {"none", StorageFault::none}});
  return [fault](Stage& stage) { stage.phone().files().fail(fault); };
}

Action readClearCooldown(const Members& step, const Files&) {
  const bool background = step["monitor"].oneOf<bool>({{"foreground", false}, {"background", true}});
  return [background](Stage& stage) {
    if (background) return stage.services().backgroundMonitor->clearCooldown();
    stage.services().foregroundMonitor->clearCooldown();
  };
}

}  // namespace

std::vector<StepKind> phoneSteps() {
  return {
      {"clearCooldown", {"monitor"}, readClearCooldown},
      {"fix", {"latitude", "longitude", "accuracy", "fixes"}, readFixes},
      {"track", {"points", "file", "speed", "interval", "accuracy"}, readTrack},
      {"application", {"to", "signal"}, readApplication},
      {"locationAuthorization", {"to"}, readLocationStatus},
      {"notificationAuthorization", {"to"}, readNotificationStatus},
      regionStep("enterRegion", &phone::LocationHub::enterRegion),
      regionStep("exitRegion", &phone::LocationHub::exitRegion),
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
