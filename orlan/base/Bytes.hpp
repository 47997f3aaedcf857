#pragma once

#include <string>

namespace orlan {

/// Raw bytes as a value of its own, so that data and text are never mistaken for each other.
struct Bytes {
  std::string data;

  friend bool operator==(const Bytes&, const Bytes&) = default;
};

}  // namespace orlan
