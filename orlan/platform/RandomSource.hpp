#pragma once

#include <cstdint>
#include <string>

namespace orlan {

/// Uniform random bits. Any thread.
class RandomSource {
 public:
  virtual ~RandomSource() = default;
  [[nodiscard]] virtual std::uint64_t next() = 0;
};

/// A random (version 4) UUID in its standard 36-character upper-case form. Takes two numbers.
[[nodiscard]] std::string randomUuid(RandomSource& random);

}  // namespace orlan
