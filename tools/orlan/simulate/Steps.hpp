#pragma once

#include <functional>
#include <string>
#include <variant>

#include "orlan/base/Time.hpp"
#include "tools/orlan/simulate/Walk.hpp"

namespace orlan::simulate {

class Scene;
class Stage;

/// What a step does, its arguments bound.
using Act = std::function<void(Stage&)>;
using ActOfAPerson = std::function<void(Scene&)>;  // which needs no simulated phone

/// What a step of a scenario comes to.
using Action = std::variant<Act, ActOfAPerson, Track>;

struct Step {
  Duration at{};     // since second 0
  std::string call;  // the step's name, as results repeat it
  Action action;
};

}  // namespace orlan::simulate
