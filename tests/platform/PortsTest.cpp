// What the questions to a phone answer by themselves, whichever phone it is.
#include <gtest/gtest.h>

#include <vector>

#include "orlan/platform/RandomSource.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

TEST(KeyValueStore, ReadsEachTypeOnlyAsItself) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  KeyValueStore& store = phone.platform().store;
  struct Row {
    json::Value value;
    std::optional<std::string> string, bytes;
    std::optional<double> number;
    bool boolean;
  };
  constexpr auto none = std::nullopt;
  const Row rows[] = {{"1", "1", none, none, false},     {Bytes{"ab"}, none, "ab", none, false},
                      {true, none, none, none, true},    {false, none, none, none, false},
                      {1, none, none, 1.0, false},       {0.5, none, none, 0.5, false},
                      {nullptr, none, none, none, false}};
  for (const Row& row : rows) {
    store.remove("key");
    store.set("key", row.value);
    EXPECT_EQ(store.string("key"), row.string) << json::print(row.value);
    EXPECT_EQ(store.bytes("key"), row.bytes) << json::print(row.value);
    EXPECT_EQ(store.number("key"), row.number) << json::print(row.value);
    EXPECT_EQ(store.boolean("key"), row.boolean) << json::print(row.value);
  }
}

TEST(RandomUuid, KeepsEveryBitButVersionAndVariant) {
  struct Scripted : RandomSource {
    explicit Scripted(std::vector<std::uint64_t> script) : numbers(std::move(script)) {}
    std::uint64_t next() override { return numbers.at(taken++); }
    std::vector<std::uint64_t> numbers;
    std::size_t taken = 0;
  };
  Scripted ones({~std::uint64_t{0}, ~std::uint64_t{0}});
  EXPECT_EQ(randomUuid(ones), "FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF");
  Scripted mixed({0x0123456789ABCDEF, 0x0FEDCBA987654321});
  EXPECT_EQ(randomUuid(mixed), "01234567-89AB-4DEF-8FED-CBA987654321");
}

TEST(UrlErrors, CarryTheirCodes) {
  const std::pair<Error, std::int64_t> rows[] = {
      {urlErrors::cancelled(), -999},          {urlErrors::badURL(), -1000},
      {urlErrors::timedOut(), -1001},          {urlErrors::cannotConnectToHost(), -1004},
      {urlErrors::badServerResponse(), -1011}, {urlErrors::other("why"), -1}};
  for (const auto& [error, code] : rows) EXPECT_EQ(error.code, code) << error.description;
}

TEST(StatusPhrase, IsThereForEveryNumber) {
  const std::pair<int, std::string_view> rows[] = {{200, "ok"},
                                                   {511, "network authentication required"},
                                                   {99, "unknown status"},
                                                   {199, "informational"},
                                                   {299, "success"},
                                                   {399, "redirected"},
                                                   {499, "client error"},
                                                   {599, "server error"},
                                                   {600, "unknown status"},
                                                   {-404, "unknown status"}};
  for (const auto& [status, phrase] : rows) EXPECT_EQ(statusPhrase(status), phrase) << status;
}

}  // namespace
}  // namespace orlan
