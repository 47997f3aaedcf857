#include <gtest/gtest.h>

#include <limits>

#include "orlan/base/json.hpp"

namespace orlan::json {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Json, KindsAreKeptApart) {
  EXPECT_NE(Value(1), Value(1.0));
  EXPECT_NE(Value(true), Value(1));
  EXPECT_NE(Value("1"), Value(1));
  EXPECT_NE(Value(Bytes{"a"}), Value("a"));
  EXPECT_NE(Value(nullptr), Value(false));
  EXPECT_EQ(Value(2).number(), 2.0);
  EXPECT_EQ(Value(2.5).number(), 2.5);
  EXPECT_EQ(Value("2").number(), std::nullopt);
  EXPECT_EQ(Value(true).number(), std::nullopt);
  EXPECT_EQ(Value(2.0).integer(), nullptr);
  EXPECT_EQ(Value(std::optional<std::string>()), Value());
  EXPECT_EQ(Value(std::optional<std::string>("a")), Value("a"));
}

TEST(Json, ObjectKeepsOrderAndPlaces) {
  Object object{{"b", 1}, {"a", 2}, {"b", 3}};
  EXPECT_EQ(print(object), R"({"b":3,"a":2})");
  object.set("c", nullptr);
  object.set("a", 4);
  EXPECT_TRUE(object.contains("c"));
  EXPECT_FALSE(object.contains("d"));
  object.remove("b");
  object.remove("nothing");
  EXPECT_EQ(print(object), R"({"a":4,"c":null})");
  EXPECT_EQ(object.size(), 2U);
}

TEST(Json, OfDuplicateKeysTheLastWinsInTheFirstPlace) {
  EXPECT_EQ(print(parse(R"({"a":1,"b":2,"a":3,"\u0061":4})").value()), R"({"a":4,"b":2})");
  std::string text = "{";
  std::string expected = "{";
  for (int i = 0; i < 60; ++i) {  // beyond where an index takes over
    const std::string key = "\"k" + std::to_string(i % 40) + "\":";
    text += (i == 0 ? "" : ",") + key + std::to_string(i);
    if (i < 40) expected += (i == 0 ? "" : ",") + key + std::to_string(i < 20 ? i + 40 : i);
  }
  EXPECT_EQ(print(parse(text + "}").value()), expected + "}");
}

TEST(Json, Prints) {
  struct Row {
    Value value;
    std::string text;
  };
  const Row rows[] = {
      {nullptr, "null"},
      {true, "true"},
      {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
      {5.0, "5.0"},
      {"a/\"\\\b\f\n\r\t", R"("a/\"\\\b\f\n\r\t")"},
      {std::string("\0\x1F\x7F", 3), "\"\\u0000\\u001f\x7F\""},
      {"\u00E9\u2028\U0001F600", "\"\u00E9\u2028\U0001F600\""},
      {Bytes{"\xFF\x01"}, R"({"base64":"/wE="})"},
      {Array{}, "[]"},
      {Object{}, "{}"},
      {Array{1, "x", Array{nullptr}}, R"([1,"x",[null]])"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(print(row.value), row.text);
    EXPECT_EQ(serialised(row.value).value_or(""), row.text);
  }
  const Object nested{{"a\n", 1}, {"b", Object{{"c", false}}}};
  EXPECT_EQ(print(nested), R"({"a\n":1,"b":{"c":false}})");
  EXPECT_EQ(describe(nested), R"({"a\n": 1, "b": {"c": false}})");
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

TEST(Json, Parses) {
  struct Row {
    std::string text;
    Value value;
  };
  const Row rows[] = {
      {" true\n", true},
      {"-0", 0},
      {"-0.0", -0.0},
      {"1e2", 100.0},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
      {"18446744073709551615", 18446744073709551615.0},
      {R"("\u00e9\uD83D\uDE00\/\"")", "\u00E9\U0001F600/\""},
      {R"("a\u0000b")", std::string("a\0b", 3)},
      {"[1,[2,{}],\"\"]", Array{1, Array{2, Object{}}, ""}},
      {"{\"a\":{\"b\":[null]},\"\":0}", Object{{"a", Object{{"b", Array{nullptr}}}}, {"", 0}}},
      {"\xEF\xBB\xBF[1]", Array{1}},
  };
  for (const Row& row : rows) {
    const auto value = parse(row.text);
    ASSERT_TRUE(value) << row.text << ": " << value.error().description;
    EXPECT_EQ(*value, row.value) << row.text;
  }
}

TEST(Json, RefusesWhatIsNotJson) {
  const std::string texts[] = {
      " ",
      "\xEF\xBB\xBF",
      "nul",
      "[1,]",
      "{\"a\"}",
      "1 2",
      "\"\\uD800\"",
      "01",
      "NaN",
      "1e999",
      "-1e999",
      "// c\n1",
      "[1e999]",
      "[1]x",
      "truefalse",
      std::string("[1]\0", 4),
      "18446744073709551616",
      "-9223372036854775809",
  };
  for (const std::string& text : texts) {
    const auto value = parse(text);
    ASSERT_FALSE(value) << text;
    EXPECT_EQ(value.error().domain, "JSON") << text;
    EXPECT_FALSE(value.error().description.empty()) << text;
  }
  EXPECT_FALSE(json::parse(std::string_view())) << "nothing at all";
}

TEST(Json, SaysWhatIsWrongAndWhere) {
  struct Row {
    std::string text, error;
  };
  const Row rows[] = {
      {"", "the text is empty"},
      {"{\n  \"a\": [1, 2,\n    3,, 4]\n}", "not valid JSON at line 3, column 7"},
      {"[\"\u00E9\u00E9\", nope]", "not valid JSON at line 1, column 8"},
      {"\xEF\xBB\xBF{a:1}", "not valid JSON at line 1, column 2"},
      {"[1]\n]", "not valid JSON at line 2, column 1"},
      {"[", "not valid JSON at the end of the text"},
      {"[1,\n1e999]", "a number is malformed or too large at line 2, column 1"},
      {"[\"ok\",\n \"a\\x\"]", "a string has a wrong escape at line 2, column 2"},
      {"{\"ok\":1,\n\"a\\x\" : 1}", "a string has a wrong escape at line 2, column 1"},
      {"[\"a\nb\"]", "a string has a line break or another control character in it"},
      {"[\"abc]", "a string does not end"},
      {"[\"\xFF\"]", "the text is not UTF-8"},
      {"<html>", "not valid JSON"},
  };
  for (const Row& row : rows) EXPECT_EQ(parse(row.text).error().description, row.error) << row.text;
}

std::string nested(std::size_t depth) {
  return std::string(depth, '[') + std::string(depth, ']');
}

TEST(Json, DepthIsLimitedSoThatNoTextCanOverflowTheStack) {
  EXPECT_TRUE(parse(nested(500)));
  EXPECT_EQ(parse(nested(600)).error().description,
            "arrays or objects are nested too deeply at line 1, column 513");
  EXPECT_FALSE(parse(std::string(1'000'000, '[')));
}

TEST(Json, ManyMembersAreReadInLinearTime) {
  std::string text = "{";
  for (int i = 0; i < 300'000; ++i) text += "\"k" + std::to_string(i) + "\":1,";
  const auto value = parse(text + "\"end\":2}");
  ASSERT_TRUE(value);
  EXPECT_EQ(value->object()->size(), 300'001U);
}

TEST(Json, NumbersOfAnySizeAreReadWhereNobodyNeedsThem) {
  const auto document =
      Document::parse(R"({"a":[18446744073709551616,-1e999 ],"s":"\u00e9 1e999","b":-99999999999999999999})");
  ASSERT_TRUE(document) << document.error().description;
  std::vector<std::optional<double>> numbers;
  document->root().members([&](std::string_view, Node value) {
    EXPECT_EQ(value.string().value_or("\u00E9 1e999"), "\u00E9 1e999");
    const auto note = [&](Node number) {
      EXPECT_EQ(number.integer(), std::nullopt);
      numbers.push_back(number.number());
      return true;
    };
    return value.kind() == Kind::real ? note(value) : value.elements(note);
  });
  EXPECT_EQ(numbers, (std::vector<std::optional<double>>{18446744073709551616.0, std::nullopt, -1e20}));
  for (const char* text :
       {"[1e999,]", "[01e999]", "[1.e999]", "[.1e999]", "[+1e999]", "[1e999]x", "[1e999,01]"}) {
    EXPECT_FALSE(Document::parse(text)) << text;
  }
  EXPECT_EQ(Document::parse("[1e999,7").error().description, "not valid JSON at line 1, column 8");
}

TEST(JsonNode, GivesEachKindOnlyAsItself) {
  const auto document = Document::parse(
      R"([null, true, 7, 42.0, 42.5, 9223372036854775808, -9223372036854775808.0, 9223372036854775808.0, "7", [1], {"a": 1}])");
  ASSERT_TRUE(document);
  struct Row {
    Kind kind;
    std::string_view name;
    std::optional<bool> boolean;
    std::optional<std::int64_t> integer;
    std::optional<double> number;
    std::optional<std::string_view> string;
    std::size_t size;
  };
  constexpr auto none = std::nullopt;
  constexpr double big = 9223372036854775808.0;
  const Row rows[] = {
      {Kind::null, "null", none, none, none, none, 0},
      {Kind::boolean, "a boolean", true, none, none, none, 0},
      {Kind::integer, "an integer", none, 7, 7.0, none, 0},
      {Kind::real, "a number", none, 42, 42.0, none, 0},
      {Kind::real, "a number", none, none, 42.5, none, 0},
      {Kind::real, "a number", none, none, big, none, 0},
      {Kind::real, "a number", none, std::numeric_limits<std::int64_t>::min(), -big, none, 0},
      {Kind::real, "a number", none, none, big, none, 0},
      {Kind::string, "a string", none, none, none, "7", 0},
      {Kind::array, "an array", none, none, none, none, 1},
      {Kind::object, "an object", none, none, none, none, 1},
  };
  ASSERT_EQ(document->root().size(), std::size(rows));
  std::size_t at = 0;
  document->root().elements([&](Node node) {
    const Row& row = rows[at];
    EXPECT_EQ(node.kind(), row.kind) << at;
    EXPECT_EQ(node.kindName(), row.name) << at;
    EXPECT_EQ(node.boolean(), row.boolean) << at;
    EXPECT_EQ(node.integer(), row.integer) << at;
    EXPECT_EQ(node.number(), row.number) << at;
    EXPECT_EQ(node.string(), row.string) << at;
    EXPECT_EQ(node.size(), row.size) << at;
    ++at;
    return true;
  });
  EXPECT_EQ(at, std::size(rows));
}

TEST(JsonNode, VisitsInOrderUntilToldToStop) {
  auto document = Document::parse(R"({"a":1,"b":2,"a":3})");
  ASSERT_TRUE(document);
  const Document moved = std::move(*document);  // cursors do not notice
  std::string seen;
  EXPECT_TRUE(moved.root().members([&](std::string_view key, Node node) {
    seen += std::string(key) + std::to_string(*node.integer());
    return true;
  }));
  EXPECT_EQ(seen, "a1b2a3");
  seen.clear();
  EXPECT_FALSE(moved.root().members([&](std::string_view key, Node) {
    seen += key;
    return key != "b";
  }));
  EXPECT_EQ(seen, "ab");
  EXPECT_TRUE(moved.root().elements([&](Node) {
    ADD_FAILURE() << "an object has no elements";
    return true;
  }));
}

}  // namespace
}  // namespace orlan::json
