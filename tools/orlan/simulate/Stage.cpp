#include "tools/orlan/simulate/Stage.hpp"

#include <utility>

namespace orlan::simulate {
namespace {

template <class... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

Stage::Stage(sim::World& world, const Scenario& scenario, Transcript& transcript,
             const std::vector<Spectator>& spectators)
    : scenario_(scenario), transcript_(transcript), spectators_(spectators), phone_(world, scenario.phone) {
  phone_.observe(transcript_);
  for (const Spectator& spectator : spectators_) {
    if (spectator.phone != nullptr) phone_.observe(*spectator.phone);
  }
  for (const Route& route : scenario.backend) phone_.http().answer(route.method, route.path, route.answers);
}

void Stage::launch() {
  process_ = std::make_unique<Process>(phone_, scenario_.hosts, transcript_);
  for (const Spectator& spectator : spectators_) {
    if (spectator.launched) spectator.launched(services(), phone_.application().state());
  }
}

void Stage::perform(std::size_t index, std::size_t fix) {
  index_ = index;
  fix_ = fix;
  std::visit([this](const auto& action) { act(action); }, scenario_.steps[index].action);
}

OrlanPlugin::Delegate Stage::delegateIf(bool wanted) const {
  return wanted ? OrlanPlugin::Delegate(process_->delegate) : OrlanPlugin::Delegate();
}

void Stage::result(json::Value value) {
  transcript_.result(index_, scenario_.steps[index_].call, std::move(value));
}

void Stage::act(const step::Start& start) {
  OrlanPlugin& plugin = *services().plugin;
  const auto delegate = delegateIf(start.delegate);
  std::visit(
      Overloaded{
          [&](const FromPropertyList&) { plugin.start(start.env, start.segmentations, delegate); },
          [&](const ApiKey& key) { plugin.start(key.apiKey, start.env, start.segmentations, delegate); },
          [&](const AppScoped& app) {
            plugin.start(app.companyApiKey, app.appId, app.appApiKey, app.iosBundleId, start.env,
                         start.segmentations, app.includeLegacyApiKeyHeader, delegate);
          }},
      start.choice);
}

void Stage::act(const step::StartBridged& start) {
  OrlanPlugin& plugin = *services().plugin;
  const auto delegate = delegateIf(start.delegate);
  const json::Value& tags = start.segmentations;
  std::visit(
      Overloaded{
          [&](const FromPropertyList&) { plugin.startBridged(start.environment, tags, delegate); },
          [&](const ApiKey& key) { plugin.startBridged(key.apiKey, start.environment, tags, delegate); },
          [&](const AppScoped& app) {
            plugin.startBridged(app.companyApiKey, app.appId, app.appApiKey, app.iosBundleId,
                                start.environment, tags, delegate);
          }},
      start.choice);
}

void Stage::act(const step::GetNotificationStats&) {
  result(services().plugin->getNotificationStats());
}

void Stage::act(const step::ResetNotificationStats&) {
  services().plugin->resetNotificationStats();
}

void Stage::act(const step::ClearCooldown& cooldown) {
  if (cooldown.background) {
    services().backgroundMonitor->clearCooldown();
  } else {
    services().foregroundMonitor->clearCooldown();
  }
}

void Stage::act(const step::Fixes& batch) {
  std::vector<Location> fixes;
  for (const Fix& fix : batch.fixes) fixes.push_back(phone_.fixAt(fix.coordinate, fix.accuracy));
  phone_.locations().deliver(fixes);
}

void Stage::act(const step::Track& walk) {
  const Fix& fix = walk.fixes[fix_];
  phone_.moveTo(fix.coordinate, fix.accuracy);
}

void Stage::act(const step::MoveApplication& move) {
  phone_.application().moveTo(move.to);
}

void Stage::act(const step::RaiseSignal& raise) {
  phone_.application().raise(raise.signal);
}

void Stage::act(const step::SetLocationAuthorization& status) {
  phone_.locations().setAuthorization(status.to);
}

void Stage::act(const step::SetNotificationAuthorization& status) {
  phone_.notifications().setAuthorization(status.to);
}

void Stage::act(const step::CrossRegion& crossing) {
  if (crossing.entering) {
    phone_.locations().enterRegion(crossing.identifier);
  } else {
    phone_.locations().exitRegion(crossing.identifier);
  }
}

void Stage::act(const step::Relaunch& relaunch) {
  {
    const Transcript::Silence killed(transcript_);  // a process that is killed says nothing any more
    process_.reset();
  }
  phone_.relaunch(relaunch.application);
  launch();
}

void Stage::act(const step::SetClock& clock) {
  phone_.clock().set(clock.to);
}

void Stage::act(const step::ChangeStore& change) {
  phone_.store().change(change.key, change.value.value_or(nullptr));
}

void Stage::act(const step::ChangeFile& change) {
  phone_.files().change(change.name, change.text);
}

void Stage::act(const step::ReadFile& read) {
  result(phone_.files().content(read.name));
}

void Stage::act(const step::FailLocation& failure) {
  phone_.locations().fail(Error{"LocationService", -1, failure.description});
}

void Stage::act(const step::FailStorage& storage) {
  phone_.files().fail(storage.fault);
}

}  // namespace orlan::simulate
