#include <gtest/gtest.h>

#include <clocale>
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

TEST(HostLocale, OfTheLanguageDoesNotShowInNumbers) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new GermanNumbers));
  expectPointsEverywhere();
  std::locale::global(before);
}

TEST(HostLocale, OfTheCLibraryDoesNotShowInNumbers) {
  const char* found = nullptr;
  for (const char* name : {"tr_TR.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8", "ru_RU.UTF-8", "pt_BR.UTF-8"}) {
    if (found = std::setlocale(LC_ALL, name); found != nullptr) break;
  }
  if (found == nullptr) GTEST_SKIP() << "no locale with a decimal comma is installed (package locales-all)";
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
  expectPointsEverywhere();
  std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace orlan
