#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <locale>

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
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
      {"-0.12", -0.12},          {".5", 0.5},
      {"+1.5e2", 150.0},         {"0X1P3", 8.0},
      {"+Infinity", infinity},   {"-1e999", -infinity},
      {"1e-999", 0.0},           {"", std::nullopt},
      {" 1", std::nullopt},      {"1 ", std::nullopt},
      {"1e", std::nullopt},      {"+-1", std::nullopt},
      {"infinit", std::nullopt}, {std::string_view("+1\0", 3), std::nullopt},
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
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"9223372036854775808", std::nullopt},
      {"", std::nullopt},
      {"+-1", std::nullopt},
      {"1.0", std::nullopt},
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

/// Writes numbers as much unlike C as a locale can.
class GermanNumbers : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

void expectPointsEverywhere() {
  EXPECT_EQ(fromDouble(1234567.5), "1234567.5");
  EXPECT_EQ(fixed(1234.5, 2), "1234.50");
  EXPECT_EQ(json::print(json::Array{1234567, 0.5}), "[1234567,0.5]");
  EXPECT_EQ(isoDateTime(TimePoint{}), "1970-01-01T00:00:00Z");
  EXPECT_EQ(toDouble("1.5"), 1.5);
  EXPECT_EQ(toDouble("+1.5"), 1.5);  // goes the slow way
  EXPECT_EQ(toDouble("+1,5"), std::nullopt);
  EXPECT_EQ(json::parse("[1.5]").value(), json::Value(json::Array{1.5}));
}

/// Makes a German locale in a directory of its own, as the machine's administrator would; needs the package
/// locales. The name to choose it by, or nothing.
std::string madeLocale() {
  std::string directory = ::testing::TempDir() + "orlan-locale-XXXXXX";
  if (mkdtemp(directory.data()) == nullptr) return {};
  const std::string command = "localedef -i de_DE -f UTF-8 '" + directory + "/de_DE.UTF-8' >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) return {};
  setenv("LOCPATH", directory.c_str(), 1);
  return "de_DE.UTF-8";
}

TEST(Numbers, AreTheSameInEveryLocaleOfTheHost) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new GermanNumbers));
  expectPointsEverywhere();
  std::locale::global(before);
  const std::string name = madeLocale();
  if (name.empty()) GTEST_SKIP() << "no locale can be made here (Debian's package locales has what it takes)";
  ASSERT_NE(std::setlocale(LC_ALL, name.c_str()), nullptr);
  expectPointsEverywhere();
  std::setlocale(LC_ALL, "C");
  std::filesystem::remove_all(getenv("LOCPATH"));
  unsetenv("LOCPATH");
}

}  // namespace
}  // namespace orlan::text
