#include <gtest/gtest.h>

#include "c/walk.h"

namespace {

TEST(CHost, StartsWalksAndHearsOfATapOnAPhoneInC) {
  mini_phone* const phone = mini_new();
  mini_serve(phone);
  const char* const problem = walk(phone);
  EXPECT_STREQ(problem, nullptr);
  if (problem != nullptr) {
    for (std::size_t i = 0; i < phone->line_count; ++i) std::puts(phone->lines[i]);
    orlan_uninstall();
  }
  EXPECT_EQ(mini_free(phone), ORLAN_OK);
}

}  // namespace
