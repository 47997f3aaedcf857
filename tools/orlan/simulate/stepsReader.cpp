#include <algorithm>

#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/spelling.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

/// The step's kind; a mistake when there is none.
const StepKind* kindOf(const Item& call) {
  const std::string* name = call.value().string();
  if (name == nullptr) {
    call.expected("the name of a step");
    return nullptr;
  }
  std::vector<std::string_view> names;
  for (const StepKind& kind : stepKinds()) {
    names.push_back(kind.name);
    if (kind.name == *name) return &kind;
  }
  call.mistaken("unknown step " + json::print(*name) + ", did you mean " +
                json::print(nearest(*name, names)) + "?");
  return nullptr;
}

Action readAction(const StepKind& kind, const Item& step, const Files& files) {
  std::vector<std::string_view> known{"at", "do"};
  known.insert(known.end(), kind.arguments.begin(), kind.arguments.end());
  return kind.read(step.members(known), files);
}

}  // namespace

std::vector<Step> readSteps(const Item& item, const Files& files) {
  std::vector<Step> steps;
  Duration last{};
  for (const Item& element : item.elements()) {
    if (element.value().object() == nullptr) {
      element.expected("an object");
      continue;
    }
    const Members members(element);
    const Item time = members["at"];
    const Duration at = time.time();
    if (at < last) time.expected(text::fromDouble(seconds(last)) + " or later, like the step in front of it");
    last = std::max(last, at);
    const Item call = members["do"];
    if (const StepKind* kind = kindOf(call)) {
      steps.push_back({at, call.string(), readAction(*kind, element, files)});
    }
  }
  return steps;
}

}  // namespace orlan::simulate
