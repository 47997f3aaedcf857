#include "orlan/platform/RandomSource.hpp"

#include <fmt/format.h>

namespace orlan {

std::string randomUuid(RandomSource& random) {
  constexpr std::uint64_t versionMask = 0xF000;
  constexpr std::uint64_t version4 = 0x4000;
  constexpr std::uint64_t variantMask = std::uint64_t{3} << 62U;
  constexpr std::uint64_t standardVariant = std::uint64_t{2} << 62U;
  const std::uint64_t high = (random.next() & ~versionMask) | version4;
  const std::uint64_t low = (random.next() & ~variantMask) | standardVariant;
  return fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:012X}", high >> 32U, high >> 16U & 0xFFFFU,
                     high & 0xFFFFU, low >> 48U, low & 0xFFFFFFFFFFFFU);
}

}  // namespace orlan
