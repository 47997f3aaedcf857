#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

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
      {0.0, "0.0"},
      {-0.0, "-0.0"},
      {1.0, "1.0"},
      {-42.0, "-42.0"},
      {0.1, "0.1"},
      {0.1 + 0.2, "0.30000000000000004"},
      {51.5074, "51.5074"},
      {100000.0, "100000.0"},
      {1e15, "1000000000000000.0"},
      {9007199254740993.0, "9007199254740992.0"},
      {9999999999999998.0, "9999999999999998.0"},
      {1e16, "1e+16"},
      {-1e16, "-1e+16"},
      {123456789012345680.0, "1.2345678901234568e+17"},
      {1e22, "1e+22"},
      {1e-4, "0.0001"},
      {0.00012345, "0.00012345"},
      {std::nextafter(1e-4, 0.0), "9.999999999999999e-05"},
      {2.5e-7, "2.5e-07"},
      {1e100, "1e+100"},
      {5e-324, "5e-324"},
      {2.2250738585072014e-308, "2.2250738585072014e-308"},
      {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
      {infinity, "inf"},
      {-infinity, "-inf"},
      {notANumber, "nan"},
      {-notANumber, "nan"},
  };
  for (const Row& row : rows) EXPECT_EQ(fromDouble(row.value), row.text);
}

/// How many significant digits the C library needs for the same double.
int digitsNeeded(double value) {
  char buffer[40];
  for (int digits = 1; digits < 17; ++digits) {
    (void)std::snprintf(buffer, sizeof buffer, "%.*e", digits - 1, value);
    if (std::strtod(buffer, nullptr) == value) return digits;
  }
  return 17;
}

int significantDigits(std::string text) {
  text.resize(std::min(text.size(), text.find('e')));
  std::string digits;
  for (const char c : text) {
    if (c >= '0' && c <= '9') digits += c;
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  while (digits.ends_with('0')) digits.pop_back();
  return static_cast<int>(digits.size());
}

TEST(Numbers, DoublesOfEverySizeReadBackFromTheShortestText) {
  std::mt19937_64 random(20'250'314);
  std::uniform_real_distribution<double> degrees(-180.0, 180.0);
  for (int i = 0; i < 100'000; ++i) {
    const double anyBits = std::bit_cast<double>(random());
    for (const double value : {anyBits, degrees(random), std::ldexp(degrees(random), i % 80)}) {
      if (std::isnan(value) || std::isinf(value)) continue;
      const std::string text = fromDouble(value);
      const auto back = toDouble(text);
      ASSERT_TRUE(back) << text;
      ASSERT_EQ(std::bit_cast<std::uint64_t>(*back), std::bit_cast<std::uint64_t>(value)) << text;
      if (i % 20 == 0) {
        ASSERT_LE(significantDigits(text), digitsNeeded(value)) << text;
      }
    }
  }
}

TEST(Numbers, TextAsDouble) {
  struct Row {
    std::string_view text;
    std::optional<double> value;
  };
  const Row rows[] = {
      {"51.5", 51.5},
      {"-0.12", -0.12},
      {"+7", 7.0},
      {".5", 0.5},
      {"5.", 5.0},
      {"007", 7.0},
      {"1e3", 1000.0},
      {"1E+3", 1000.0},
      {"-1e-3", -0.001},
      {"+1.5e2", 150.0},
      {"0x1p3", 8.0},
      {"0X1P3", 8.0},
      {"-0x.8p1", -1.0},
      {"0x1F", 31.0},
      {"inf", infinity},
      {"-INF", -infinity},
      {"+Infinity", infinity},
      {"infinity", infinity},
      {"1e999", infinity},
      {"-1e999", -infinity},
      {"1e-999", 0.0},
      {"4.9e-324", 5e-324},
      {"1e-320", 1e-320},
      {"", std::nullopt},
      {" 1", std::nullopt},
      {"\t1", std::nullopt},
      {"\n1", std::nullopt},
      {"\v1", std::nullopt},
      {"\f1", std::nullopt},
      {"\r1", std::nullopt},
      {"1 ", std::nullopt},
      {"1,5", std::nullopt},
      {"1.2.3", std::nullopt},
      {"1e", std::nullopt},
      {"e1", std::nullopt},
      {".", std::nullopt},
      {"+", std::nullopt},
      {"+-1", std::nullopt},
      {"--1", std::nullopt},
      {"0x", std::nullopt},
      {"0xg", std::nullopt},
      {"infinit", std::nullopt},
      {"north", std::nullopt},
      {"1\xC2\xA0", std::nullopt},
      {std::string_view("1\0", 2), std::nullopt},
      {std::string_view("+1\0", 3), std::nullopt},
      {std::string_view("\0", 1), std::nullopt},
  };
  for (const Row& row : rows) EXPECT_EQ(toDouble(row.text), row.value) << '"' << row.text << '"';

  for (const char* text : {"nan", "NaN", "-nan", "+nan", "nan(7)"}) {
    const auto value = toDouble(text);
    ASSERT_TRUE(value) << text;
    EXPECT_TRUE(std::isnan(*value)) << text;
  }
  EXPECT_TRUE(std::signbit(*toDouble("-0")));
}

TEST(Numbers, ReadsLikeTheCLibraryWhateverTheText) {
  std::mt19937_64 random(7);
  constexpr std::string_view pieces = "0123456789..eE+-xXpPaf in";
  for (int i = 0; i < 200'000; ++i) {
    std::string text;
    for (std::size_t length = 1 + random() % 9; length > 0; --length)
      text += pieces[random() % pieces.size()];
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const bool whole = *end == '\0' && text.front() != ' ';
    const auto value = toDouble(text);
    ASSERT_EQ(value.has_value(), whole) << text;
    if (whole && !std::isnan(expected)) {
      ASSERT_EQ(*value, expected) << text;
    }
  }
}

TEST(Numbers, TextAsInteger) {
  struct Row {
    std::string_view text;
    std::optional<std::int64_t> value;
  };
  const Row rows[] = {
      {"0", 0},
      {"-0", 0},
      {"+42", 42},
      {"-42", -42},
      {"007", 7},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
      {"9223372036854775808", std::nullopt},
      {"-9223372036854775809", std::nullopt},
      {"", std::nullopt},
      {"+", std::nullopt},
      {"-", std::nullopt},
      {"+-1", std::nullopt},
      {"--1", std::nullopt},
      {" 1", std::nullopt},
      {"1 ", std::nullopt},
      {"1.0", std::nullopt},
      {"1e3", std::nullopt},
      {"0x10", std::nullopt},
      {"\xD9\xA1", std::nullopt},  // an Arabic-Indic one
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
  const Row rows[] = {
      {1.005, 2, "1.00"},
      {2.5, 0, "2"},
      {3.5, 0, "4"},
      {-0.001, 2, "-0.00"},
      {1e15, 1, "1000000000000000.0"},
      {0.1, 20, "0.10000000000000000555"},
      {infinity, 2, "inf"},
      {-infinity, 2, "-inf"},
      {1.25, -3, "1"},
  };
  for (const Row& row : rows) EXPECT_EQ(fixed(row.value, row.places), row.text) << row.value;
  EXPECT_EQ(fixed(std::numeric_limits<double>::max(), 3).size(), 313U);
}

}  // namespace
}  // namespace orlan::text
