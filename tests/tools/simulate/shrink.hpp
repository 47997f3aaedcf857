#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <vector>

namespace orlan::simulate::life {

/// The shortest list that a greedy search finds of which `fails` still holds: leaves out halves, quarters and
/// so on, until nothing can go.
template <class T, class Fails>
std::vector<T> shrunk(std::vector<T> items, Fails fails) {
  for (std::size_t size = std::max<std::size_t>(items.size() / 2, 1);; size /= 2) {
    bool less = true;
    while (less) {
      less = false;
      for (std::size_t from = 0; from < items.size();) {
        auto without = items;
        const auto first = without.begin() + static_cast<std::ptrdiff_t>(from);
        without.erase(first, first + static_cast<std::ptrdiff_t>(std::min(size, items.size() - from)));
        if (fails(without)) {
          items = std::move(without);
          less = true;
        } else {
          from += size;
        }
      }
    }
    if (size <= 1) return items;
  }
}

}  // namespace orlan::simulate::life
