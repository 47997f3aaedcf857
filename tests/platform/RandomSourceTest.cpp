#include <gtest/gtest.h>

#include <vector>

#include "orlan/platform/RandomSource.hpp"

namespace orlan {
namespace {

class Scripted : public RandomSource {
 public:
  explicit Scripted(std::vector<std::uint64_t> numbers) : numbers_(std::move(numbers)) {}
  std::uint64_t next() override { return numbers_.at(taken++); }
  std::size_t taken = 0;

 private:
  std::vector<std::uint64_t> numbers_;
};

TEST(RandomUuid, KeepsEveryBitButVersionAndVariant) {
  struct Row {
    std::uint64_t high, low;
    const char* uuid;
  };
  const Row rows[] = {
      {0, 0, "00000000-0000-4000-8000-000000000000"},
      {~std::uint64_t{0}, ~std::uint64_t{0}, "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF"},
      {0x0123456789ABCDEF, 0x0FEDCBA987654321, "01234567-89AB-4DEF-8FED-CBA987654321"},
  };
  for (const Row& row : rows) {
    Scripted random({row.high, row.low});
    EXPECT_EQ(randomUuid(random), row.uuid);
    EXPECT_EQ(random.taken, 2U);
  }
}

}  // namespace
}  // namespace orlan
