#include "tools/orlan/simulate/words.hpp"

namespace orlan::simulate {

std::string_view nameOf(ApplicationState state) {
  switch (state) {
    case ApplicationState::active:
      return "active";
    case ApplicationState::inactive:
      return "inactive";
    case ApplicationState::background:
      return "background";
  }
  return {};
}

std::string_view nameOf(ApplicationSignal signal) {
  switch (signal) {
    case ApplicationSignal::didEnterBackground:
      return "didEnterBackground";
    case ApplicationSignal::willEnterForeground:
      return "willEnterForeground";
    case ApplicationSignal::didBecomeActive:
      return "didBecomeActive";
    case ApplicationSignal::willResignActive:
      return "willResignActive";
  }
  return {};
}

std::string_view nameOf(phone::RegionAction action) {
  switch (action) {
    case phone::RegionAction::start:
      return "start";
    case phone::RegionAction::stop:
      return "stop";
    case phone::RegionAction::enter:
      return "enter";
    case phone::RegionAction::exit:
      return "exit";
  }
  return {};
}

std::string faultName(const Result<HttpReply>& result) {
  if (result) return "notHTTP";
  if (result.error() == urlErrors::timedOut()) return "timeout";
  if (result.error() == urlErrors::cannotConnectToHost()) return "unreachable";
  if (result.error() == urlErrors::cancelled()) return "cancelled";
  return result.error().description;
}

}  // namespace orlan::simulate
