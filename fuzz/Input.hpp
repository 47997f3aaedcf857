#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace orlan::fuzz {

/// Ends the run: the input at hand breaks a promise.
inline void require(bool promise, const char* what) {
  if (promise) return;
  std::fprintf(stderr, "broken: %s\n", what);
  std::abort();
}

/// Reads numbers from a fuzzer's bytes; beyond their end all are zero.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  [[nodiscard]] bool empty() const { return left_ == 0; }

  std::uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  /// One byte for a number that is hard on geometry, or a marker and any eight bytes.
  double number() {
    using Limits = std::numeric_limits<double>;
    static constexpr std::array special{Limits::infinity(),
                                        -Limits::infinity(),
                                        Limits::quiet_NaN(),
                                        Limits::max(),
                                        Limits::lowest(),
                                        Limits::min(),
                                        Limits::denorm_min(),
                                        -0.0,
                                        90.0,
                                        -90.0,
                                        180.0,
                                        -180.0,
                                        1e9,
                                        1e-9,
                                        360.0,
                                        89.9999};
    const std::uint8_t choice = byte();
    if (choice < 16) return special[choice];
    if (choice < 64) return 0.5 + 0x1p-53 * (choice - 40);  // beside each other
    if (choice < 240) return (choice - 152) * 0.25;
    double any = 0.0;
    std::array<std::uint8_t, sizeof any> bytes{};
    for (auto& each : bytes) each = byte();
    std::memcpy(&any, bytes.data(), sizeof any);
    return any;
  }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
};

}  // namespace orlan::fuzz
