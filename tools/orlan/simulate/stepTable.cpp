#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {

const std::vector<StepKind>& stepKinds() {
  static const std::vector<StepKind> kinds = [] {
    std::vector<StepKind> all;
    for (const auto& chapter :
         {startCalls(), publicCalls(), surveyCalls(), notificationSteps(), phoneSteps()}) {
      all.insert(all.end(), chapter.begin(), chapter.end());
    }
    return all;
  }();
  return kinds;
}

}  // namespace orlan::simulate
