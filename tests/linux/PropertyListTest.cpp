#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "linux/TemporaryDirectory.hpp"
#include "phones/linux/PropertyList.hpp"

namespace orlan::linuxphone {
namespace {

using namespace std::string_literals;

std::string plist(const std::string& inside) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" "
         "\"http://example.com/p.dtd\">\n<plist version=\"1.0\">\n" +
         inside + "\n</plist>\n";
}
std::string dictionary(const std::string& members) {
  return plist("<dict>\n" + members + "\n</dict>");
}

std::string summary(const Result<json::Object>& read) {
  return read ? json::print(*read) : "error: " + read.error().description;
}

TEST(XmlPropertyList, EveryElementHasItsValue) {
  const struct {
    std::string element;
    json::Value expected;
  } rows[] = {
      {"<string>a &amp; b&#x21;</string>", "a & b!"},
      {"<string>  </string>", "  "},
      {"<string/>", ""},
      {"<string> a<![CDATA[<b>]]>\xc3\xa9 </string>", " a<b>\xc3\xa9 "},
      {"<integer>42</integer>", 42},
      {"<integer> -5 </integer>", -5},
      {"<integer>-9223372036854775808</integer>", std::numeric_limits<std::int64_t>::min()},
      {"<integer>18446744073709551615</integer>", 18446744073709551615.0},
      {"<integer>0x1F</integer>", 31},
      {"<real>-1.5e3</real>", -1500.0},
      {"<real>3</real>", 3.0},
      {"<true/>", true},
      {"<false></false>", false},
      {"<date>2020-02-29T12:00:00Z</date>", "2020-02-29T12:00:00Z"},
      {"<data>\n\tAP8=\n\t</data>", Bytes{"\0\xff"s}},
      {"<data/>", Bytes{}},
      {"<array><integer>1</integer><!-- two --><array/></array>", json::Array{1, json::Array{}}},
      {"<dict><key>a</key><true/></dict>", json::Object{{"a", true}}},
  };
  for (const auto& row : rows) {
    const auto read = parsePropertyList(dictionary("<key>k</key>" + row.element));
    ASSERT_TRUE(read) << row.element << ": " << read.error().description;
    EXPECT_EQ(*read, (json::Object{{"k", row.expected}})) << row.element;
  }
}

TEST(XmlPropertyList, TheLastOfDuplicateKeysWins) {
  EXPECT_EQ(
      summary(parsePropertyList(dictionary("<key>a</key><true/><key>b</key><true/><key>a</key><false/>"))),
      R"({"a":false,"b":true})");
}

TEST(XmlPropertyList, AnyEncodingWillDo) {
  const std::string text = plist("<dict><key>k</key><string>\xc3\xa9</string></dict>");
  const std::string bare = text.substr(text.find('\n') + 1);  // without the declaration
  auto wide = [](const std::string& narrow, bool bigEndian) {
    std::string units;
    for (std::size_t i = 0; i < narrow.size(); ++i) {
      char c = narrow[i];
      if (c == '\xc3') c = '\xe9', ++i;
      units.append(bigEndian ? std::string{'\0', c} : std::string{c, '\0'});
    }
    return units;
  };
  const std::string latin =
      "<?xml version=\"1.0\" "
      "encoding=\"ISO-8859-1\"?><plist><dict><key>k</key><string>\xe9</string></dict></plist>";
  for (const auto& [name, bytes] : {std::pair<const char*, std::string>{"UTF-8", text},
                                    {"UTF-8 with mark", "\xef\xbb\xbf" + text},
                                    {"UTF-16 LE with mark", "\xff\xfe" + wide(bare, false)},
                                    {"UTF-16 BE with mark", "\xfe\xff" + wide(bare, true)},
                                    {"UTF-16 LE", wide(bare, false)},
                                    {"Latin-1", latin}}) {
    EXPECT_EQ(summary(parsePropertyList(bytes)), "{\"k\":\"\xc3\xa9\"}") << name;
  }
}

TEST(XmlPropertyList, MistakesAreOneLineWithTheirPlace) {
  std::string deep;
  for (int i = 0; i < 5'000; ++i) deep += "<array>";
  for (int i = 0; i < 5'000; ++i) deep += "</array>";
  const struct {
    const char* name;
    std::string text;
    std::string expected;
  } rows[] = {
      {"empty", "", "the file is empty"},
      {"no XML", "company_api_key = x", "line 1: No document element found"},
      {"another document", "<html/>", "line 1: not a property list"},
      {"nothing inside", plist(""), "line 3: the property list is empty"},
      {"array", plist("<array/>"), "expected a dictionary, found an array"},
      {"text", plist("<string>x</string>"), "expected a dictionary, found a string"},
      {"cut off", "<plist>\n<dict>\n<key>a</key>", "line 3: Start-end tags mismatch"},
      {"no value", dictionary("<key>a</key>"), "line 5: a key without a value"},
      {"no key", dictionary("<true/>"), "line 5: expected <key>"},
      {"no integer", dictionary("<key>a</key>\n<integer>4x</integer>"), "line 6: not an integer"},
      {"no real", dictionary("<key>a</key><real/>"), "line 5: not a number"},
      {"no date", dictionary("<key>a</key><date>2021-02-29T00:00:00Z</date>"), "line 5: not a date"},
      {"no base64", dictionary("<key>a</key><data>A</data>"), "line 5: not base64"},
      {"unknown", dictionary("<key>a</key><blob/>"), "line 5: not an element of a property list: <blob>"},
      {"not text", dictionary("<key>a</key><string>\xff</string>"), "line 5: not valid text"},
      {"deep", dictionary("<key>a</key>" + deep), "line 5: nested too deeply"},
      {"long", dictionary("<key>a</key><string>" + std::string(200'000, 'x') + "</string>"),
       "the file is too long"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(summary(parsePropertyList(row.text)), "error: " + row.expected) << row.name;
  }
}

/// Objects of a binary property list, put together as a file: `offsets` and references take one byte.
std::string binary(const std::vector<std::string>& objects) {
  std::string bytes = "bplist00";
  std::string offsets;
  for (const auto& object : objects) {
    offsets += static_cast<char>(bytes.size());
    bytes += object;
  }
  const auto table = static_cast<char>(bytes.size());
  auto number = [](char low) { return std::string(7, '\0') + low; };
  return bytes + offsets + std::string(6, '\0') + "\x01\x01" + number(static_cast<char>(objects.size())) +
         number('\0') + number(table);
}

TEST(BinaryPropertyList, EveryObjectHasItsValue) {
  const struct {
    const char* name;
    std::string object;
    json::Value expected;
  } rows[] = {
      {"true", "\x09", true},
      {"false", "\x08", false},
      {"small integer", "\x10\xc8", 200},
      {"negative integer", "\x13\xff\xff\xff\xff\xff\xff\xff\xfb", -5},
      {"real", "\x23\x3f\xf8\0\0\0\0\0\0"s, 1.5},
      {"ASCII text", "\x52hi", "hi"},
      {"UTF-16 text", "\x61\0\xe9"s, "\xc3\xa9"},
      {"data", "\x42\0\xff"s, Bytes{"\0\xff"s}},
      {"date", "\x33\x41\xb0\0\0\0\0\0\0"s, "2009-07-04T21:24:16Z"},  // 2^28 s after 2001 began
      {"empty array", "\xa0", json::Array{}},
  };
  for (const auto& row : rows) {
    const auto read = parsePropertyList(binary({"\xd1\x01\x02", "\x51k", row.object}));
    ASSERT_TRUE(read) << row.name << ": " << read.error().description;
    EXPECT_EQ(*read, (json::Object{{"k", row.expected}})) << row.name;
  }
}

TEST(BinaryPropertyList, DamageIsAnErrorWhereverItIs) {
  const std::string whole = binary({"\xd2\x01\x03\x02\x04", "\x51k", "\x52hi", "\x51n", "\xa1\x02"});
  ASSERT_EQ(summary(parsePropertyList(whole)), R"({"k":"hi","n":["hi"]})");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(parsePropertyList(whole.substr(0, length))) << length;
  }
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int change : {1, 0x80, 0xff}) {
      std::string damaged = whole;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      (void)parsePropertyList(damaged);  // some are still fine; none may crash
    }
  }
  EXPECT_EQ(summary(parsePropertyList(binary({"\xa0"}))), "error: expected a dictionary, found an array");
  EXPECT_FALSE(parsePropertyList(binary({"\xd1\x01\0"s, "\x51k"})));  // holds itself
}

TEST(PropertyListFile, ErrorsBeginWithThePath) {
  const test::TemporaryDirectory directory;
  const std::string path = directory.file("OrlanConfig.plist");
  EXPECT_EQ(summary(readPropertyList(path)), "error: " + path + ": No such file or directory");
  std::ofstream(path) << plist("<array/>");
  EXPECT_EQ(summary(readPropertyList(path)), "error: " + path + ": expected a dictionary, found an array");
  std::ofstream(path) << dictionary("<key>apiKey</key><string>k</string>");
  EXPECT_EQ(summary(readPropertyList(path)), R"({"apiKey":"k"})");
}

}  // namespace
}  // namespace orlan::linuxphone
