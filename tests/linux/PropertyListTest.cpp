#include <gtest/gtest.h>

#include <cstring>
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
  const std::pair<std::string, json::Value> rows[] = {
      {"<string>  </string>", "  "},
      {"<string/>", ""},
      {"<string> a &amp;<![CDATA[<b>]]>\xc3\xa9 </string>", " a &<b>\xc3\xa9 "},
      {"<integer> -5 </integer>", -5},
      {"<integer>18446744073709551615</integer>", 18446744073709551615.0},
      {"<real>-1.5e3</real>", -1500.0},
      {"<true/>", true},
      {"<false></false>", false},
      {"<date>2020-02-29T12:00:00Z</date>", "2020-02-29T12:00:00Z"},
      {"<data>\n\tAP8=\n\t</data>", Bytes{"\0\xff"s}},
      {"<array><integer>1</integer><!-- two --><array/></array>", json::Array{1, json::Array{}}},
      {"<dict><key>a</key><true/><key>b</key><true/><key>a</key><false/></dict>",
       json::Object{{"a", false}, {"b", true}}},
  };
  for (const auto& [element, expected] : rows) {
    const auto read = parsePropertyList(dictionary("<key>k</key>" + element));
    EXPECT_EQ(read.value_or(json::Object()), (json::Object{{"k", expected}})) << element;
  }
}

TEST(XmlPropertyList, MistakesAreOneLineWithTheirPlace) {
  std::string deep;
  for (int i = 0; i < 5'000; ++i) deep = "<array>" + deep + "</array>";
  const std::pair<std::string, std::string> rows[] = {
      {"", "the file is empty"},
      {"company_api_key = x", "line 1: No document element found"},
      {"<html/>", "line 1: not a property list"},
      {plist(""), "line 3: the property list is empty"},
      {plist("<array/>"), "expected a dictionary, found an array"},
      {"<plist>\n<dict>\n<key>a</key>", "line 3: Start-end tags mismatch"},
      {dictionary("<key>a</key>"), "line 5: a key without a value"},
      {"\xff\xfe<\0a\0/\0>\0"s, "not a property list"},  // UTF-16: nobody counts its lines
      {dictionary("<true/>"), "line 5: expected <key>"},
      {dictionary("<key>a</key>\n<integer>4x</integer>"), "line 6: not an integer"},
      {dictionary("<key>a</key><real/>"), "line 5: not a number"},
      {dictionary("<key>a</key><date>2021-02-29T00:00:00Z</date>"), "line 5: not a date"},
      {dictionary("<key>a</key><data>A</data>"), "line 5: not base64"},
      {dictionary("<key>a</key><blob/>"), "line 5: not an element of a property list: <blob>"},
      {dictionary("<key>a</key><string>\xff</string>"), "line 5: not valid text"},
      {dictionary("<key>a</key>" + deep), "line 5: nested too deeply"},
      {dictionary("<key>a</key><string>" + std::string(200'000, 'x') + "</string>"), "the file is too long"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(summary(parsePropertyList(text)), "error: " + expected);
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

TEST(BinaryPropertyList, IsReadByTheSameRules) {
  const std::string minusFive = "\x13\xff\xff\xff\xff\xff\xff\xff\xfb";
  const std::string whole =
      binary({"\xd2\x01\x03\x02\x04", "\x51k", minusFive, "\x51n", "\xa2\x05\x06", "\x61\0\xe9"s, "\x53<&>"});
  EXPECT_EQ(summary(parsePropertyList(whole)), "{\"k\":-5,\"n\":[\"\xc3\xa9\",\"<&>\"]}");
  const std::string damaged = "error: the binary property list is damaged";
  for (std::size_t length = std::strlen("bplist"); length < whole.size(); ++length) {
    EXPECT_EQ(summary(parsePropertyList(whole.substr(0, length))), damaged) << length;
  }
  EXPECT_EQ(summary(parsePropertyList(binary({"\xd1\x01\0"s, "\x51k"}))), damaged);  // holds itself
}

TEST(PropertyListFile, ErrorsBeginWithThePath) {
  const test::TemporaryDirectory directory;
  const std::string path = directory.file("OrlanConfig.plist");
  EXPECT_EQ(summary(readPropertyList(path)), "error: " + path + ": No such file or directory");
  std::ofstream(path) << plist("<array/>");
  EXPECT_EQ(summary(readPropertyList(path)), "error: " + path + ": expected a dictionary, found an array");
}

}  // namespace
}  // namespace orlan::linuxphone
