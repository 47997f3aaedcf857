#include <gtest/gtest.h>

#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {
namespace {

/// Holds what a test puts in.
class Held : public KeyValueStore {
 public:
  explicit Held(json::Object values) : values_(std::move(values)) {}
  std::optional<json::Value> get(std::string_view key) const override {
    const json::Value* value = values_.find(key);
    return value ? std::optional(*value) : std::nullopt;
  }
  void set(std::string_view key, json::Value value) override { values_.set(key, std::move(value)); }
  void remove(std::string_view key) override { values_.remove(key); }
  json::Object contents() const override { return values_; }

 private:
  json::Object values_;
};

TEST(KeyValueStore, ReadsEachTypeOnlyAsItself) {
  const Held store(
      {{"text", "1"}, {"bytes", Bytes{"ab"}}, {"yes", true}, {"no", false}, {"one", 1}, {"half", 0.5}});
  struct Row {
    std::string key;
    std::optional<std::string> string, bytes;
    std::optional<double> number;
    bool boolean;
  };
  constexpr auto none = std::nullopt;
  const Row rows[] = {
      {"text", "1", none, none, false},     {"bytes", none, "ab", none, false},
      {"yes", none, none, none, true},      {"no", none, none, none, false},
      {"one", none, none, 1.0, false},      {"half", none, none, 0.5, false},
      {"nothing", none, none, none, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(store.string(row.key), row.string) << row.key;
    EXPECT_EQ(store.bytes(row.key), row.bytes) << row.key;
    EXPECT_EQ(store.number(row.key), row.number) << row.key;
    EXPECT_EQ(store.boolean(row.key), row.boolean) << row.key;
  }
}

}  // namespace
}  // namespace orlan
