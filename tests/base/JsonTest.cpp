#include <gtest/gtest.h>

#include <limits>

#include "orlan/base/elements.hpp"
#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"

namespace orlan::json {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Json, OfDuplicateKeysTheLastWinsInTheFirstPlaceInLinearTime) {
  Object object{{"b", 1}, {"a", 2}, {"b", 3}};
  object.set("c", nullptr);
  object.set("a", 4);
  EXPECT_EQ(print(object), R"({"b":3,"a":4,"c":null})");
  EXPECT_EQ(print(parse(R"({"a":1,"b":2,"a":3,"\u0061":4})").value()), R"({"a":4,"b":2})");

  constexpr int members = 300'000;
  constexpr int keys = 200'000;
  std::string text = "{";
  std::string expected = "{";
  for (int i = 0; i < members; ++i) {
    const std::string key = (i == 0 ? "\"k" : ",\"k") + std::to_string(i % keys) + "\":";
    text += key + std::to_string(i);
    if (i < keys) expected += key + std::to_string(i + keys < members ? i + keys : i);
  }
  EXPECT_TRUE(print(parse(text + "}").value()) == expected + "}");
}

TEST(Json, Prints) {
  struct Row {
    Value value;
    std::string text;
  };
  const Row rows[] = {
      {nullptr, "null"},
      {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
      {5.0, "5.0"},
      {"a/\"\\\b\f\n\r\t", R"("a/\"\\\b\f\n\r\t")"},
      {std::string("\0\x1F\x7F", 3), "\"\\u0000\\u001f\x7F\""},
      {"\u00E9\u2028\U0001F600", "\"\u00E9\u2028\U0001F600\""},
      {Bytes{"\xFF\x01"}, R"({"base64":"/wE="})"},
      {Array{1, Array{}, Object{{"a\n", false}, {"", Object{}}}}, R"([1,[],{"a\n":false,"":{}}])"},
  };
  for (const Row& row : rows) EXPECT_EQ(serialised(row.value).value_or(""), row.text);
  EXPECT_EQ(describe(Object{{"a\n", 1}, {"b", Array{"c", false}}}), R"({"a\n": 1, "b": ["c", false]})");
}

TEST(Json, HasNoFormForSome) {
  const std::pair<Value, std::string> rows[] = {
      {infinity, "\"Infinity\""},
      {-infinity, "\"-Infinity\""},
      {std::numeric_limits<double>::quiet_NaN(), "\"NaN\""},
      {"a\xFF\xE2\x82z", "\"a\uFFFD\uFFFD\uFFFDz\""},
      {Object{{"\xFF", 1}}, "{\"\uFFFD\":1}"},
  };
  for (const auto& [value, text] : rows) {
    EXPECT_EQ(print(value), text);
    EXPECT_FALSE(serialised(Array{value, 1})) << text;
  }
}

TEST(Json, ParsesNumbersOf64BitsAndTextsWithNul) {
  struct Row {
    std::string text;
    Value value;
  };
  const Row rows[] = {
      {"-0", 0},
      {"-0.0", -0.0},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
      {"18446744073709551615", 18446744073709551615.0},
      {R"("a\u0000b")", std::string("a\0b", 3)},
      {"{\"a\":{\"b\":[null,true]},\"\":\"\"}", Object{{"a", Object{{"b", Array{nullptr, true}}}}, {"", ""}}},
      {"\xEF\xBB\xBF[1]", Array{1}},
  };
  for (const Row& row : rows) {
    const auto value = parse(row.text);
    ASSERT_TRUE(value) << row.text << ": " << value.error().description;
    EXPECT_EQ(*value, row.value) << row.text;
  }
}

TEST(Json, SaysWhatIsWrongAndWhere) {
  struct Row {
    std::string_view text, error;
  };
  const Row rows[] = {
      {{}, "the text is empty"},
      {"\xEF\xBB\xBF", "the text is empty"},
      {"{\n  \"a\": [1, 2,\n    3,, 4]\n}", "not valid JSON at line 3, column 7"},
      {"[\"\u00E9\u00E9\", nope]", "not valid JSON at line 1, column 8"},
      {"\xEF\xBB\xBF{a:1}", "not valid JSON at line 1, column 2"},
      {"[1]\n]", "not valid JSON at line 2, column 1"},
      {"[", "not valid JSON at the end of the text"},
      {"[1,\n1e999]", "a number is malformed or too large at line 2, column 1"},
      {"[18446744073709551616]", "a number is malformed or too large at line 1, column 2"},
      {"-9223372036854775809", "a number is malformed or too large"},
      {"[01]", "a number is malformed or too large at line 1, column 2"},
      {"[\"ok\",\n \"a\\x\"]", "a string has a wrong escape at line 2, column 2"},
      {"{\"ok\":1,\n\"a\\x\" : 1}", "a string has a wrong escape at line 2, column 1"},
      {"[\"a\nb\"]", "a string has a line break or another control character in it"},
      {"[\"abc]", "a string does not end"},
      {"[\"\xFF\"]", "the text is not UTF-8"},
      {"<html>", "not valid JSON"},
  };
  for (const Row& row : rows) {
    const auto value = parse(row.text);
    ASSERT_FALSE(value) << row.text;
    EXPECT_EQ(value.error().description, row.error) << row.text;
  }
}

TEST(Json, DepthIsLimitedSoThatNoTextCanOverflowTheStack) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
  EXPECT_TRUE(parse(nested(500)));
  EXPECT_EQ(parse(nested(600)).error().description,
            "arrays or objects are nested too deeply at line 1, column 513");
  EXPECT_FALSE(parse(std::string(1'000'000, '[')));
}

TEST(Json, NumbersOfAnySizeAreReadWhereNobodyNeedsThem) {
  const auto document =
      Document::parse(R"({"a":[18446744073709551616,-1e999 ],"s":"\u00e9 1e999","b":-99999999999999999999})");
  ASSERT_TRUE(document) << document.error().description;
  EXPECT_EQ(print(document->root().value()),
            "{\"a\":[1.8446744073709552e+19,1.7976931348623157e+308],\"s\":\"\u00E9 1e999\",\"b\":-1e+20}");
  for (const char* text :
       {"[1e999,]", "[01e999]", "[1.e999]", "[.1e999]", "[+1e999]", "[1e999]x", "[1e999,01]"}) {
    EXPECT_FALSE(Document::parse(text)) << text;
  }
  EXPECT_EQ(Document::parse("[1e999,7").error().description, "not valid JSON at line 1, column 8");
}

/// What a text's node says it is, and all that it can be taken for.
std::string taken(const char* text) {
  const auto document = Document::parse(text);
  const Node node = document.value().root();
  std::string out(node.kindName());
  if (node.boolean()) out += *node.boolean() ? ", true" : ", false";
  if (node.integer()) out += ", integer " + std::to_string(*node.integer());
  if (node.number()) out += ", number " + text::fromDouble(*node.number());
  if (node.string()) out += ", text " + std::string(*node.string());
  if (node.size() > 0) out += " of " + std::to_string(node.size());
  return out;
}

TEST(JsonNode, GivesEachKindOnlyAsItself) {
  const std::pair<const char*, const char*> rows[] = {
      {"null", "null"},
      {"false", "a boolean, false"},
      {"7", "an integer, integer 7, number 7.0"},
      {"42.0", "a number, integer 42, number 42.0"},
      {"42.5", "a number, number 42.5"},
      {"9223372036854775808", "a number, number 9.223372036854776e+18"},
      {"9223372036854775808.0", "a number, number 9.223372036854776e+18"},
      {"-9223372036854775808.0", "a number, integer -9223372036854775808, number -9.223372036854776e+18"},
      {R"("7")", "a string, text 7"},
      {"[1]", "an array of 1"},
      {R"({"a": 1})", "an object of 1"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(taken(text), expected) << text;
}

TEST(JsonNode, VisitsInOrderUntilToldToStop) {
  const auto document = Document::parse(R"({"a":1,"b":2,"a":3})");
  ASSERT_TRUE(document);
  std::string seen;
  const auto until = [&](std::string_view last) {
    return document->root().members([&](std::string_view key, Node node) {
      seen += std::string(key) + std::to_string(*node.integer());
      return key != last;
    });
  };
  EXPECT_TRUE(until("none"));
  EXPECT_FALSE(until("b"));
  EXPECT_EQ(seen, "a1b2a3a1b2");
  EXPECT_TRUE(document->root().elements([](Node) { return false; })) << "an object has no elements";
}

TEST(JsonElements, AreVisitedOneByOneOrTheTextIsNotPlain) {
  constexpr std::string_view arrays[] = {"a", "b"};
  struct Row {
    std::string text, visited;
    bool isPlain;
  };
  const std::string longText(5000, '[');
  const Row rows[] = {
      {R"({"a":[],"b":[ ]})", "", true},
      {R"( {"x":{"a":[9]}, "b" :[7,"]"] ,"a":[[1,{"{":"}"}],null]} )", R"(1:7 1:"]" 0:[1,{"{":"}"}] 0:null )",
       true},
      {R"({"a":[")" + longText + R"("],"\u0062":[{"c":[{"long \"text\"":")" + std::string(200, '.') +
           R"("}]}]})",
       "0:\"" + longText + R"(" 1:{"c":[{"long \"text\"":")" + std::string(200, '.') + "\"}]} ", true},
      {R"({"a":[1,2]})", "0:1 0:2 ", false},
      {R"({"a":[1],"b":7})", "0:1 ", false},
      {R"({"a":[1],"b":[],"a":[2]})", "0:1 ", false},
      {R"({"a":[1,"stop",2],"b":[]})", "0:1 0:\"stop\" ", false},
      {R"({"a":[{"lonely":"]"}],"b":[]})", "", false},  // valid, but only as a document
      {R"({"a":[1],"b":[]}})", "0:1 ", false},
  };
  for (const Row& row : rows) {
    std::string visited;
    const bool isPlain = eachElement(row.text, arrays, [&](std::size_t array, Node element) {
      visited += std::to_string(array) + ":" + print(element.value()) + " ";
      return element.string() != "stop";
    });
    EXPECT_EQ(visited, row.visited) << row.text;
    EXPECT_EQ(isPlain, row.isPlain) << row.text;
  }
}

}  // namespace
}  // namespace orlan::json
