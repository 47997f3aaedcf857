#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

template <class Phone>
class StoreContract : public ::testing::Test {
 protected:
  Phone phone;
  KeyValueStore& store = phone.platform().store;
};
TYPED_TEST_SUITE_P(StoreContract);

TYPED_TEST_P(StoreContract, EveryValueReadsBackWithItsType) {
  using namespace std::string_literals;
  const std::vector<std::pair<std::string, json::Value>> rows = {
      {"text", "héllo 🔔"},
      {"empty text", ""},
      {"text with NUL", "a\0b"s},
      {"true", true},
      {"false", false},
      {"one", 1},
      {"zero", 0},
      {"least integer", std::numeric_limits<std::int64_t>::min()},
      {"greatest integer", std::numeric_limits<std::int64_t>::max()},
      {"integral double", 1.0},
      {"negative zero", -0.0},
      {"third", 1.0 / 3.0},
      {"infinity", std::numeric_limits<double>::infinity()},
      {"bytes", Bytes{"\x00\xff\x80"s}},
      {"empty bytes", Bytes{}},
      {"", "under the empty key"},
      {"ключ\0x"s, "under a key with a NUL"},
  };
  for (const auto& [key, value] : rows) this->store.set(key, value);
  for (const auto& [key, value] : rows) EXPECT_EQ(this->store.get(key), value) << key;
  EXPECT_EQ(this->store.contents().size(), rows.size());
}

TYPED_TEST_P(StoreContract, OnlyWhatItCanKeepReplacesAndRemovingRemoves) {
  this->store.set("b", "first");
  this->store.set("b", 2);
  this->store.set("b", nullptr);
  this->store.set("b", json::Array{1});
  this->store.set("b", json::Object{{"a", 1}});
  this->store.set("a", true);
  EXPECT_EQ(this->store.contents(), (json::Object{{"a", true}, {"b", 2}}));  // sorted by key
  this->store.remove("b");
  this->store.remove("never there");
  EXPECT_EQ(this->store.get("b"), std::nullopt);
  EXPECT_EQ(this->store.contents(), (json::Object{{"a", true}}));
}

TYPED_TEST_P(StoreContract, SeveralThreadsMayWriteAtOnce) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([this, t] {
      for (int i = 0; i < 25; ++i) {
        this->store.set("key " + std::to_string(t) + " " + std::to_string(i), i);
        (void)this->store.get("shared");
        this->store.set("shared", t);
      }
    });
  }
  for (auto& each : threads) each.join();
  EXPECT_EQ(this->store.contents().size(), 101U);
}

REGISTER_TYPED_TEST_SUITE_P(StoreContract, EveryValueReadsBackWithItsType,
                            OnlyWhatItCanKeepReplacesAndRemovingRemoves, SeveralThreadsMayWriteAtOnce);

}  // namespace orlan
