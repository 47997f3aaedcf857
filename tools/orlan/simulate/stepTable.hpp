#pragma once

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/orlan/simulate/Files.hpp"
#include "tools/orlan/simulate/Item.hpp"
#include "tools/orlan/simulate/Steps.hpp"

namespace orlan::simulate {

/// What a step's "do" may say, its arguments, and how they are read once it is known that there are no
/// others.
struct StepKind {
  std::string_view name;
  std::vector<std::string_view> arguments;  // besides "at" and "do"
  std::function<Action(const Members& step, const Files& files)> read;
};

/// Every step that the format knows.
[[nodiscard]] const std::vector<StepKind>& stepKinds();

// Its chapters, each in a file of its own.
[[nodiscard]] std::vector<StepKind> startCalls();
[[nodiscard]] std::vector<StepKind> publicCalls();
[[nodiscard]] std::vector<StepKind> surveyCalls();
[[nodiscard]] std::vector<StepKind> notificationSteps();
[[nodiscard]] std::vector<StepKind> phoneSteps();

/// A step without arguments that makes this call.
template <class Make>
[[nodiscard]] StepKind plainCall(std::string_view name, Make make) {
  return {name, {}, [make = std::move(make)](const Members&, const Files&) { return Act(make); }};
}

}  // namespace orlan::simulate
