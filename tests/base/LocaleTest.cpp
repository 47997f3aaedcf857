#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <string>

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

/// Writes numbers as much unlike C as a locale can.
class GermanNumbers : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

void expectPointsEverywhere() {
  EXPECT_EQ(text::fromDouble(1234.5), "1234.5");
  EXPECT_EQ(text::fromDouble(1234567.0), "1234567.0");
  EXPECT_EQ(text::fixed(1234.5, 2), "1234.50");
  EXPECT_EQ(json::print(json::Array{1234567, 0.5}), "[1234567,0.5]");
  EXPECT_EQ(isoDateTime(TimePoint{}), "1970-01-01T00:00:00Z");

  EXPECT_EQ(text::toDouble("1.5"), 1.5);
  EXPECT_EQ(text::toDouble("+1.5"), 1.5);  // this and the next go the slow way
  EXPECT_EQ(text::toDouble("0x1.8p0"), 1.5);
  EXPECT_EQ(text::toDouble("1,5"), std::nullopt);
  EXPECT_EQ(text::toDouble("+1,5"), std::nullopt);
  EXPECT_EQ(json::parse("[1.5]").value(), json::Value(json::Array{1.5}));

  EXPECT_EQ(text::upper("i"), "I");
  EXPECT_EQ(text::lower("I"), "i");
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

TEST(HostLocale, DoesNotShowInNumbers) {
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
}  // namespace orlan
