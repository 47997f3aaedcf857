#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "orlan/platform/Coordinate.hpp"

namespace orlan::bench {

using Rings = std::vector<std::vector<Coordinate>>;

/// How many of the rings that it was made of contain a place.
using Counter = std::function<std::size_t(Coordinate)>;

[[nodiscard]] Counter geosCounter(const Rings& rings);   // its tree, a point locator a polygon
[[nodiscard]] Counter s2Counter(const Rings& rings);     // its shape index
[[nodiscard]] Counter boostCounter(const Rings& rings);  // its R-tree, then `within`

}  // namespace orlan::bench
