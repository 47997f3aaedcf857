#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "orlan/base/text.hpp"

namespace orlan::text {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Numbers, DoubleAsText) {
  struct Row {
    double value;
    const char* text;
  };
  const Row rows[] = {
      {0.0, "0.0"},         {-0.0, "-0.0"},         {0.1 + 0.2, "0.30000000000000004"},
      {51.5074, "51.5074"}, {100000.0, "100000.0"}, {9999999999999998.0, "9999999999999998.0"},
      {-1e16, "-1e+16"},    {1e-4, "0.0001"},       {std::nextafter(1e-4, 0.0), "9.999999999999999e-05"},
      {2.5e-7, "2.5e-07"},  {5e-324, "5e-324"},     {-2.2250738585072014e-308, "-2.2250738585072014e-308"},
      {infinity, "inf"},    {-infinity, "-inf"},    {-notANumber, "nan"},
  };
  for (const Row& row : rows) EXPECT_EQ(fromDouble(row.value), row.text);
}

TEST(Numbers, TextAsDouble) {
  struct Row {
    std::string_view text;
    std::optional<double> value;
  };
  const Row rows[] = {
      {"-0.12", -0.12},
      {"+7", 7.0},
      {".5", 0.5},
      {"5.", 5.0},
      {"-1e-3", -0.001},
      {"+1.5e2", 150.0},
      {"0X1P3", 8.0},
      {"-INF", -infinity},
      {"+Infinity", infinity},
      {"-1e999", -infinity},
      {"1e-999", 0.0},
      {"", std::nullopt},
      {" 1", std::nullopt},
      {"\t1", std::nullopt},
      {"\r1", std::nullopt},
      {"1 ", std::nullopt},
      {"1,5", std::nullopt},
      {"1e", std::nullopt},
      {"+-1", std::nullopt},
      {"infinit", std::nullopt},
      {std::string_view("1\0", 2), std::nullopt},
      {std::string_view("+1\0", 3), std::nullopt},
  };
  for (const Row& row : rows) EXPECT_EQ(toDouble(row.text), row.value) << '"' << row.text << '"';
  EXPECT_TRUE(std::isnan(toDouble("nan").value()));
  EXPECT_TRUE(std::isnan(toDouble("+nan(7)").value()));
}

TEST(Numbers, TextAsInteger) {
  struct Row {
    std::string_view text;
    std::optional<std::int64_t> value;
  };
  const Row rows[] = {
      {"+42", 42},
      {"-007", -7},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"9223372036854775808", std::nullopt},
      {"", std::nullopt},
      {"+", std::nullopt},
      {"+-1", std::nullopt},
      {" 1", std::nullopt},
      {"1 ", std::nullopt},
      {"1.0", std::nullopt},
      {std::string_view("1\0", 2), std::nullopt},
  };
  for (const Row& row : rows) EXPECT_EQ(toInteger(row.text), row.value) << '"' << row.text << '"';
}

TEST(Numbers, FixedPlaces) {
  struct Row {
    double value;
    int places;
    const char* text;
  };
  const Row rows[] = {{1.005, 2, "1.00"},
                      {2.5, 0, "2"},
                      {3.5, 0, "4"},
                      {-0.001, 2, "-0.00"},
                      {1e15, 1, "1000000000000000.0"},
                      {infinity, 2, "inf"},
                      {1.25, -3, "1"}};
  for (const Row& row : rows) EXPECT_EQ(fixed(row.value, row.places), row.text) << row.value;
  EXPECT_EQ(fixed(std::numeric_limits<double>::max(), 3).size(), 313U);
}

}  // namespace
}  // namespace orlan::text
