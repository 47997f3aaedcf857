#include "orlan/sdk/ScopedMainLoop.hpp"

#include <utility>

namespace orlan {

std::function<void()> ScopedMainLoop::scoped(std::function<void()> task) const {
  return [isOpen = isOpen_, owner = owner_, task = std::move(task)] {
    if (isOpen.expired()) return;
    const Turn turn = owner.lock();
    task();
  };
}

}  // namespace orlan
