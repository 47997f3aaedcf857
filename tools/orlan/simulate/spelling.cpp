#include "tools/orlan/simulate/spelling.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "orlan/base/ascii.hpp"

namespace orlan::simulate {
namespace {

constexpr std::size_t longestWord = 64;  // a longer one is no slip of the finger

std::size_t editDistance(std::string_view a, std::string_view b) {
  const std::size_t width = b.size() + 1;
  std::vector<std::size_t> cost((a.size() + 1) * width);
  const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& { return cost[i * width + j]; };
  for (std::size_t i = 0; i <= a.size(); ++i) at(i, 0) = i;
  for (std::size_t j = 0; j <= b.size(); ++j) at(0, j) = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = ascii::lowered(a[i - 1]) == ascii::lowered(b[j - 1]);
      at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + (same ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && ascii::lowered(a[i - 1]) == ascii::lowered(b[j - 2]) &&
                           ascii::lowered(a[i - 2]) == ascii::lowered(b[j - 1]);
      if (swapped) at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
    }
  }
  return at(a.size(), b.size());
}

}  // namespace

std::string_view nearest(std::string_view word, std::span<const std::string_view> candidates) {
  std::string_view best;
  std::size_t bestDistance = std::numeric_limits<std::size_t>::max();
  for (const auto candidate : candidates) {
    const std::size_t distance = editDistance(word.substr(0, longestWord), candidate);
    if (distance < bestDistance) {
      bestDistance = distance;
      best = candidate;
    }
  }
  return best;
}

}  // namespace orlan::simulate
