#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan::simulate {

/// A position as a scenario gives it; when it is taken follows from the step.
struct Fix {
  Coordinate coordinate;  // degrees
  double accuracy = 5.0;  // metres
};

class Scene;
class Stage;

/// What a step does, its arguments bound.
using Act = std::function<void(Stage&)>;
using ActOfAPerson = std::function<void(Scene&)>;  // which needs no simulated phone

/// A walk, already cut into single fixes at even intervals.
struct Track {
  Duration interval{};
  std::vector<Fix> fixes;
};

/// What a step of a scenario comes to.
using Action = std::variant<Act, ActOfAPerson, Track>;

struct Step {
  Duration at{};     // since second 0
  std::string call;  // the step's name, as results repeat it
  Action action;
};

}  // namespace orlan::simulate
