#include <gtest/gtest.h>

#include <array>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::text {
namespace {

TEST(Text, TrimmedLosesUnicodeWhiteSpaceAtBothEnds) {
  const std::string all =
      "\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A"
      "\u2028\u2029\u202F\u205F\u3000";
  struct Row {
    std::string label, text, trimmed;
  };
  const Row rows[] = {
      {"every white space", all + "key" + all, "key"},
      {"inside stays", "  two  words\t", "two  words"},
      {"nothing but", all, ""},
      {"zero width space is none", "\u200Bkey", "\u200Bkey"},
      {"last bytes of white space alone", "\x80key\x85", "\x80key\x85"},
      {"cut off sequence", "key\xE2\x80", "key\xE2\x80"},
  };
  for (const Row& row : rows) EXPECT_EQ(trimmed(row.text), row.trimmed) << row.label;
}

TEST(Text, AsciiFoldsTheLettersAndNothingElse) {
  EXPECT_TRUE(ascii::equalsIgnoringCase("AZ-az09", "az-AZ09"));
  for (const auto& [a, b] : {std::pair{"@[", "`{"}, {"\xC4", "\xE4"}, {"Content", "Content-Length"}}) {
    EXPECT_FALSE(ascii::equalsIgnoringCase(a, b)) << a;
    EXPECT_FALSE(ascii::equalsIgnoringCase(b, a)) << a;
  }
}

TEST(Text, CaseMappingKnowsTheSpecialCases) {
  struct Row {
    std::string text, upper, lower;
  };
  const Row rows[] = {
      {"stra\u00DFe", "STRASSE", "stra\u00DFe"},
      {"\u1E9E", "\u1E9E", "\u00DF"},
      {"\uFB01\uFB03", "FIFFI", "\uFB01\uFB03"},   // ligatures
      {"\u1FB7", "\u0391\u0342\u0399", "\u1FB7"},  // alpha, circumflex and iota below
      {"\uFB17", "\u0544\u053D", "\uFB17"},        // the last of the table
      {"\u0130", "\u0130", "i\u0307"},             // I with a dot
      {"\U00010428", "\U00010400", "\U00010428"},  // beyond the first plane
      {"a\xFF\x80z", "A\xFF\x80Z", "a\xFF\x80z"},  // not UTF-8
  };
  for (const Row& row : rows) {
    EXPECT_EQ(upper(row.text), row.upper) << row.text;
    EXPECT_EQ(lower(row.text), row.lower) << row.text;
  }
}

TEST(Text, CharactersAreWhatAPersonCounts) {
  const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
  const std::string flag = "\U0001F1ED\U0001F1F7";
  struct Row {
    std::string label, text;
    std::size_t characters;
    std::string firstTwo;
  };
  const Row rows[] = {
      {"ASCII", "abc", 3, "ab"},
      {"combining marks", "e\u0301x\u0308z", 3, "e\u0301x\u0308"},
      {"line break of two", "\r\n\r\n\r\n", 3, "\r\n\r\n"},
      {"family", family + family + family, 3, family + family},
      {"flags", flag + flag + flag, 3, flag + flag},
      {"stray bytes, each one", "a\xFF\xFE", 3, "a\xFF"},
      {"flags around a stray byte", flag + "\xFF" + flag, 3, flag + "\xFF"},
      {"mark behind a stray byte", "\xFF\u0301\xFF", 3, "\xFF\u0301"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(characterCount(row.text), row.characters) << row.label;
    EXPECT_EQ(prefix(row.text, 2), row.firstTwo) << row.label;
    EXPECT_EQ(prefix(row.text, 0), "") << row.label;
    EXPECT_EQ(prefix(row.text, 99), row.text) << row.label;
  }
}

TEST(Text, ControlsAreMadeVisible) {
  EXPECT_EQ(escapedControls("a\n\t\r\x1B[31m\x7F\u0085\u009F z"),
            "a\\n\\t\\r\\u001b[31m\\u007f\\u0085\\u009f z");
  EXPECT_EQ(escapedControls(std::string_view("\0", 1)), "\\u0000");
  EXPECT_EQ(escapedControls("\x9B\u00E9\xE2\x82"), "\\x9b\u00E9\\xe2\\x82");
  EXPECT_EQ(escapedControls("\\n \u00A0\U0001F600"), "\\n \u00A0\U0001F600");
}

TEST(Text, SplitDropsWhatIsEmptyAndJoinKeepsIt) {
  using Parts = std::vector<std::string>;
  EXPECT_EQ(split("a,b,c", ','), (Parts{"a", "b", "c"}));
  EXPECT_EQ(split(",,a,,b,", ','), (Parts{"a", "b"}));
  EXPECT_EQ(split("", ','), Parts{});
  EXPECT_EQ(joined(Parts{"a", "", "b"}, "\n"), "a\n\nb");
  EXPECT_EQ(joined(Parts{}, ", "), "");
}

TEST(Text, BytesAsHexAndBase64) {
  EXPECT_EQ(hex(std::string_view("\x00\x0F\xA5\xFF", 4)), "000fa5ff");
  const std::pair<std::string, std::string> rows[] = {
      {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"\xFB\xFF\xFE", "+//+"}};
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(base64(bytes), text);
    EXPECT_EQ(fromBase64(text), bytes) << text;
  }
  for (const char* text : {"Z", "Zg=", "Zg==Zg==", "Z===", "====", "Zm 9", "-_-_", "Zh==", "Zm9v\n"}) {
    EXPECT_EQ(fromBase64(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace orlan::text
