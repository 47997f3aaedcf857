#include <gtest/gtest.h>

#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

TEST(KeyValueStore, ReadsEachTypeOnlyAsItself) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  struct Row {
    json::Value value;
    std::optional<std::string> string, bytes;
    std::optional<double> number;
    bool boolean;
  };
  constexpr auto none = std::nullopt;
  const Row rows[] = {{"1", "1", none, none, false},  {Bytes{"ab"}, none, "ab", none, false},
                      {true, none, none, none, true}, {false, none, none, none, false},
                      {1, none, none, 1.0, false},    {0.5, none, none, 0.5, false}};
  for (const Row& row : rows) {
    KeyValueStore& store = phone.platform().store;
    store.set("key", row.value);
    EXPECT_EQ(store.string("key"), row.string) << json::print(row.value);
    EXPECT_EQ(store.bytes("key"), row.bytes) << json::print(row.value);
    EXPECT_EQ(store.number("key"), row.number) << json::print(row.value);
    EXPECT_EQ(store.boolean("key"), row.boolean) << json::print(row.value);
    EXPECT_FALSE(store.boolean("nothing"));
  }
}

}  // namespace
}  // namespace orlan
