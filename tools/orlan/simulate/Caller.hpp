#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "tools/orlan/simulate/Host.hpp"
#include "tools/orlan/simulate/Transcript.hpp"
#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::simulate {

/// Makes one call of the host for a step: whom it calls, and where the outcome is written down.
class Caller {
 public:
  Caller(Host& host, Transcript& transcript, std::size_t step, std::string call)
      : host_(host), transcript_(transcript), step_(step), call_(std::move(call)) {}

  [[nodiscard]] Host& host() { return host_; }
  [[nodiscard]] OrlanServices& services() { return host_.services(); }
  [[nodiscard]] OrlanPlugin& plugin() { return *services().plugin; }

  void result(json::Value value) { transcript_.result(step_, call_, std::move(value)); }

  /// Writes the outcome down when it is called, which may be long after the caller is gone.
  template <class T>
  [[nodiscard]] Completion<T> completion() {
    return [&transcript = transcript_, step = step_, call = call_](const Result<T>& outcome) {
      if (outcome) {
        transcript.result(step, call, formOf(*outcome));
      } else {
        transcript.failed(step, call, outcome.error());
      }
    };
  }

 private:
  Host& host_;
  Transcript& transcript_;
  std::size_t step_;
  std::string call_;
};

}  // namespace orlan::simulate
