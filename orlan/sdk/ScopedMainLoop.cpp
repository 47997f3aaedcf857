#include "orlan/sdk/ScopedMainLoop.hpp"

#include <utility>

namespace orlan {

std::function<void()> ScopedMainLoop::scoped(std::function<void()> task) const {
  return [isOpen = isOpen_, task = std::move(task)] {
    if (!isOpen.expired()) task();
  };
}

}  // namespace orlan
