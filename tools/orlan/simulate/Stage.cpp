#include "tools/orlan/simulate/Stage.hpp"

#include <fmt/format.h>

#include <utility>

#include "tools/orlan/simulate/Caller.hpp"

namespace orlan::simulate {
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
  host_ = std::make_unique<Host>(phone_, scenario_.hosts, transcript_);
  for (const Spectator& spectator : spectators_) {
    if (spectator.launched) spectator.launched(services(), phone_.application().state());
  }
}

void Stage::perform(std::size_t index, std::size_t fix) {
  index_ = index;
  fix_ = fix;
  std::visit([this](const auto& action) { act(action); }, scenario_.steps[index].action);
}

void Stage::result(json::Value value) {
  transcript_.result(index_, scenario_.steps[index_].call, std::move(value));
}

void Stage::act(const step::Call& call) {
  Caller caller(*host_, transcript_, index_, scenario_.steps[index_].call);
  call.make(caller);
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
    host_.reset();
  }
  phone_.relaunch(relaunch.application);
  launch();
}

std::optional<NotificationRequest> Stage::find(const step::Notify& notify) {
  const auto* delivered = std::get_if<step::Delivered>(&notify.what);
  if (delivered == nullptr) return std::get<NotificationRequest>(notify.what);
  const auto& scheduled = phone_.scheduled();
  if (delivered->number < scheduled.size()) return scheduled[delivered->number];
  mistake_ = fmt::format(
      "steps[{}].delivered: expected the number of a notification scheduled by then ({}), found {}", index_,
      scheduled.empty() ? "there is none" : fmt::format("0 to {}", scheduled.size() - 1), delivered->number);
  return std::nullopt;
}

void Stage::act(const step::Notify& notify) {
  const auto request = find(notify);
  if (!request) return;
  if (notify.tappedAction) {
    phone_.notifications().tap({*request, *notify.tappedAction});
  } else {
    phone_.notifications().present(*request);
  }
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
