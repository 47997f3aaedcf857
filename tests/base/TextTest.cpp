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
      {"nothing to do", "key", "key"},
      {"every white space", all + "key" + all, "key"},
      {"inside stays", "  two  words\t", "two  words"},
      {"nothing but", all, ""},
      {"empty", "", ""},
      {"zero width space is none", "\u200Bkey", "\u200Bkey"},
      {"letters beyond ASCII", " \u00E9t\u00E9\u00A0", "\u00E9t\u00E9"},
      {"last bytes of white space alone", "\x80key\x85", "\x80key\x85"},
      {"cut off sequence", "key\xE2\x80", "key\xE2\x80"},
      {"overlong blank", "key\xC0\xA0", "key\xC0\xA0"},
  };
  for (const Row& row : rows) EXPECT_EQ(trimmed(row.text), row.trimmed) << row.label;
}

TEST(Text, AsciiFoldsTheLettersAndNothingElse) {
  for (int c = -128; c < 128; ++c) {
    const char other = static_cast<char>(c ^ 0x20);
    const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    EXPECT_EQ(ascii::equalsIgnoringCase(std::string(1, static_cast<char>(c)), std::string(1, other)),
              isLetter)
        << c;
  }
  EXPECT_TRUE(ascii::equalsIgnoringCase("Content-Length", "content-LENGTH"));
  EXPECT_FALSE(ascii::equalsIgnoringCase("Content", "Content-Length"));
  EXPECT_FALSE(ascii::equalsIgnoringCase("Content-Length", "Content"));
}

TEST(Text, CaseMappingKnowsTheSpecialCases) {
  struct Row {
    std::string text, upper, lower;
  };
  const Row rows[] = {
      {"Hello 1", "HELLO 1", "hello 1"},
      {"stra\u00DFe", "STRASSE", "stra\u00DFe"},
      {"\u1E9E", "\u1E9E", "\u00DF"},
      {"\uFB01\uFB03", "FIFFI", "\uFB01\uFB03"},   // ligatures
      {"\u0149", "\u02BCN", "\u0149"},             // n after an apostrophe
      {"\u01F0", "J\u030C", "\u01F0"},             // j with caron
      {"\u0390", "\u0399\u0308\u0301", "\u0390"},  // iota, two marks
      {"\u1FB7", "\u0391\u0342\u0399", "\u1FB7"},  // alpha, circumflex and iota below
      {"\u1F80", "\u1F08\u0399", "\u1F80"},
      {"\u0587", "\u0535\u0552", "\u0587"},              // Armenian ligature
      {"\uFB17", "\u0544\u053D", "\uFB17"},              // the last of the table
      {"\u0130", "\u0130", "i\u0307"},                   // I with a dot
      {"\u0131", "I", "\u0131"},                         // i without one
      {"\u01C5", "\u01C4", "\u01C6"},                    // title-case digraph
      {"\u03A3\u03C2", "\u03A3\u03A3", "\u03C3\u03C2"},  // sigmas
      {"\U00010428", "\U00010400", "\U00010428"},        // beyond the first plane
      {"\u65E5\u672C \U0001F600", "\u65E5\u672C \U0001F600", "\u65E5\u672C \U0001F600"},
      {"a\xFF\x80z", "A\xFF\x80Z", "a\xFF\x80z"},  // not UTF-8
      {"", "", ""},
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
      {"empty", "", 0, ""},
      {"one", "a", 1, "a"},
      {"ASCII", "abc", 3, "ab"},
      {"combining marks", "e\u0301x\u0308z", 3, "e\u0301x\u0308"},
      {"line break of two", "\r\n\r\n\r\n", 3, "\r\n\r\n"},
      {"family", family + family + family, 3, family + family},
      {"flags", flag + flag + flag, 3, flag + flag},
      {"skin tone", "\U0001F44D\U0001F3FD!?", 3, "\U0001F44D\U0001F3FD!"},
      {"variation selector", "\u26A0\uFE0F b", 3, "\u26A0\uFE0F "},
      {"Hangul parts", "\u1112\u1161\u11AB\u1100\u1173\u11AF.", 3, "\u1112\u1161\u11AB\u1100\u1173\u11AF"},
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

TEST(Text, Utf8IsCheckedStrictly) {
  struct Row {
    std::string label, bytes;
    bool valid;
  };
  const Row rows[] = {
      {"empty", "", true},
      {"ASCII with a NUL", std::string("a\0b", 3), true},
      {"two, three and four bytes", "\u00E9\u20AC\U0001F600", true},
      {"highest", "\xF4\x8F\xBF\xBF", true},
      {"beyond the highest", "\xF4\x90\x80\x80", false},
      {"overlong slash", "\xC0\xAF", false},
      {"overlong of three", "\xE0\x80\xAF", false},
      {"surrogate", "\xED\xA0\x80", false},
      {"stray continuation", "\x80", false},
      {"cut off", "a\xE2\x82", false},
      {"cut off before a letter", "\xE2\x82z", false},
      {"Latin-1", "caf\xE9", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(isUtf8(row.bytes), row.valid) << row.label;
    EXPECT_EQ(utf8Or(row.bytes, "<binary>"), row.valid ? row.bytes : "<binary>") << row.label;
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
  EXPECT_EQ(split("abc", ','), (Parts{"abc"}));
  EXPECT_EQ(split(",", ','), Parts{});
  EXPECT_EQ(split("", ','), Parts{});
  EXPECT_EQ(joined(Parts{"a", "", "b"}, "\n"), "a\n\nb");
  EXPECT_EQ(joined(Parts{}, ", "), "");
}

TEST(Text, BytesAsHexAndBase64) {
  EXPECT_EQ(hex(std::string_view("\x00\x0F\xA5\xFF", 4)), "000fa5ff");
  struct Row {
    std::string bytes, text;
  };
  const Row rows[] = {{"", ""},
                      {"f", "Zg=="},
                      {"fo", "Zm8="},
                      {"foo", "Zm9v"},
                      {"foob", "Zm9vYg=="},
                      {"fooba", "Zm9vYmE="},
                      {"foobar", "Zm9vYmFy"},
                      {"\xFB\xFF\xFE", "+//+"}};
  for (const Row& row : rows) {
    EXPECT_EQ(base64(row.bytes), row.text);
    EXPECT_EQ(fromBase64(row.text), row.bytes) << row.text;
  }
  for (const char* text : {"Z", "Zg", "Zg=", "Zg==Zg==", "Z===", "====", "=", "Zm9=v", "Zm 9", "-_-_",
                           "Zh==", "Zm9v\n", "Zm9\xC3\xA9===="}) {
    EXPECT_EQ(fromBase64(text), std::nullopt) << text;
  }
}

TEST(Text, EveryBytePassesThroughBase64) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) {
    bytes += static_cast<char>(i);
    ASSERT_EQ(fromBase64(base64(bytes)), bytes) << i;
  }
}

}  // namespace
}  // namespace orlan::text
