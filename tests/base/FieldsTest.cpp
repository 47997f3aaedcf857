#include <gtest/gtest.h>

#include <array>

#include "orlan/base/Fields.hpp"

namespace orlan {
namespace {

enum class Colour { red, green };
enum class Level { low, high };

struct Point {
  double latitude = 0.0;
  std::optional<std::string> name;

  friend bool operator==(const Point&, const Point&) = default;
};

struct Sample {
  std::int64_t id = 0;
  bool on = false;
  std::string title;
  std::optional<double> score;
  std::vector<Point> points;
  Colour colour = Colour::red;
  std::optional<Level> level;
  std::map<std::string, Point> named;
  std::int64_t doubled = 0;

  friend bool operator==(const Sample&, const Sample&) = default;
};

/// Written as twice the number, read as a text.
struct Doubled {
  static bool decode(json::Node node, std::int64_t& out, json::Failure& failure) {
    const auto text = node.string();
    if (!text) return failure.expected("a text with a number", node);
    out = static_cast<std::int64_t>(text->size());
    return true;
  }
  static json::Value encode(std::int64_t value) { return 2 * value; }
};

}  // namespace

template <>
struct RawValues<Colour> {
  static constexpr std::array table{std::pair{Colour::red, std::string_view("RED")},
                                    std::pair{Colour::green, std::string_view("GREEN")}};
};
template <>
struct RawValues<Level> {
  static constexpr std::array table{std::pair{Level::low, std::int64_t{1}},
                                    std::pair{Level::high, std::int64_t{9}}};
};
template <>
struct Fields<Point> {
  static constexpr std::tuple list{field("latitude", &Point::latitude), field("name", &Point::name)};
};
template <>
struct Fields<Sample> {
  static constexpr std::tuple list{field("id", &Sample::id),
                                   field("on", &Sample::on),
                                   field("title", &Sample::title),
                                   field("score", &Sample::score),
                                   field("points", &Sample::points),
                                   field("colour", &Sample::colour),
                                   field("level", &Sample::level),
                                   field("named", &Sample::named),
                                   field("doubled", &Sample::doubled, Doubled{})};
};

namespace {

const std::string complete =
    R"({"id":1,"on":true,"title":"t","score":2,"points":[{"latitude":1.5},{"latitude":2,"name":"n"}],)"
    R"("colour":"GREEN","level":9,"named":{"a":{"latitude":3}},"doubled":"four"})";

template <class T>
concept OwnsWhatItReads = requires {
  json::decodeText<T>("");
};
static_assert(OwnsWhatItReads<std::map<std::string, Sample>>);
static_assert(!OwnsWhatItReads<std::vector<std::optional<std::string_view>>>);

TEST(Fields, DecodeAndEncodeByOneDeclaration) {
  const auto sample = json::decodeText<Sample>(complete);
  ASSERT_TRUE(sample) << sample.error().description;
  const Sample expected{1,
                        true,
                        "t",
                        2.0,
                        {{1.5, std::nullopt}, {2.0, "n"}},
                        Colour::green,
                        Level::high,
                        {{"a", {3.0, std::nullopt}}},
                        4};
  EXPECT_EQ(*sample, expected);
  EXPECT_EQ(
      json::encodeText(*sample).value_or(""),
      R"({"id":1,"on":true,"title":"t","score":2.0,"points":[{"latitude":1.5},{"latitude":2.0,"name":"n"}],)"
      R"("colour":"GREEN","level":9,"named":{"a":{"latitude":3.0}},"doubled":8})");
}

TEST(Fields, OrderAndUnknownKeysDoNotMatter) {
  EXPECT_EQ(json::decodeText<Point>(R"({"name":"n","x":[{}],"latitude":1,"y":null,"z":1e999})").value(),
            (Point{1.0, "n"}));
  EXPECT_FALSE(json::decodeText<Point>(R"({"latitude":1e999})"));
}

TEST(Fields, OptionalMayBeMissingOrNullAndIsThenLeftOut) {
  for (const char* text : {R"({"latitude":1})", R"({"latitude":1,"name":null})"}) {
    const auto point = json::decodeText<Point>(text);
    ASSERT_TRUE(point) << text;
    EXPECT_EQ(point->name, std::nullopt) << text;
    EXPECT_EQ(json::encodeText(*point).value_or(""), R"({"latitude":1.0})") << text;
  }
}

TEST(Fields, OfDuplicateKeysNothingOfTheFirstShinesThrough) {
  EXPECT_EQ(json::decodeText<Point>(R"({"latitude":1,"name":"a","latitude":2,"name":null})").value(),
            (Point{2.0, std::nullopt}));
  using Points = std::map<std::string, Point>;
  EXPECT_EQ(json::decodeText<Points>(R"({"p":{"latitude":1,"name":"a"},"p":{"latitude":2}})").value(),
            (Points{{"p", {2.0, std::nullopt}}}));
  std::string text = complete;
  text.insert(1, R"("points":[{"latitude":8}],"named":{"z":{"latitude":1}},)");
  text.insert(text.size() - 1, R"(,"named":{})");
  EXPECT_EQ(json::decodeText<Sample>(text).value().points.size(), 2U);
  EXPECT_EQ(json::decodeText<Sample>(text).value().named, Points{});
  // A fault in a value that is replaced later is a fault all the same.
  EXPECT_FALSE(json::decodeText<Point>(R"({"latitude":"x","latitude":2})"));
}

TEST(Fields, ErrorsNameThePath) {
  struct Row {
    std::string from, to, error;
  };
  const Row rows[] = {
      {"\"id\":1,", "", "id: missing"},
      {"\"id\":1", "\"id\":null", "id: expected an integer, found null"},
      {"\"id\":1", "\"id\":1.5", "id: expected an integer, found a number"},
      {"\"id\":1", "\"id\":\"1\"", "id: expected an integer, found a string"},
      {"\"on\":true", "\"on\":1", "on: expected a boolean, found an integer"},
      {"\"score\":2", "\"score\":\"2\"", "score: expected a number, found a string"},
      {"\"latitude\":1.5", "\"latitude\":[]", "points[0].latitude: expected a number, found an array"},
      {"{\"latitude\":2,\"name\":\"n\"}", "7", "points[1]: expected an object, found an integer"},
      {"\"GREEN\"", "\"BLUE\"", "colour: expected a known value, found a string"},
      {"\"level\":9", "\"level\":2", "level: expected a known value, found an integer"},
      {"\"level\":9", "\"level\":\"9\"", "level: expected an integer, found a string"},
      {"{\"a\":{\"latitude\":3}}", "{\"a\\n\":{}}", "named.a\\n.latitude: missing"},
      {"{\"a\":{\"latitude\":3}}", "[]", "named: expected an object, found an array"},
      {"\"four\"", "4", "doubled: expected a text with a number, found an integer"},
  };
  for (const Row& row : rows) {
    std::string text = complete;
    const auto at = text.find(row.from);
    ASSERT_NE(at, std::string::npos) << row.from;
    text.replace(at, row.from.size(), row.to);
    const auto sample = json::decodeText<Sample>(text);
    ASSERT_FALSE(sample) << text;
    EXPECT_EQ(sample.error(), (Error{"JSON", -1, row.error}));
  }
}

TEST(Fields, ErrorsAtTheTopHaveNoPath) {
  EXPECT_EQ(json::decodeText<Point>("[1]").error().description, "expected an object, found an array");
  using Matrix = std::vector<std::vector<std::int64_t>>;
  EXPECT_EQ(json::decodeText<Matrix>("[[1],[2,true]]").error().description,
            "[1][1]: expected an integer, found a boolean");
}

TEST(Fields, IntegersTakeAZeroFractionAndKeepTheirSize) {
  using Integers = std::vector<std::int64_t>;
  EXPECT_EQ(json::decodeText<Integers>("[42.0, -1e3, 9007199254740993]").value(),
            (Integers{42, -1000, 9007199254740993}));
  EXPECT_FALSE(json::decodeText<Integers>("[9223372036854775808]"));
  EXPECT_FALSE(json::decodeText<Integers>("[1e19]"));
}

TEST(Enumeration, HasOneTableForAllItsForms) {
  EXPECT_EQ(rawValue(Colour::green), "GREEN");
  EXPECT_EQ(fromRawValue<Colour>(std::string_view("red")), std::nullopt);
  EXPECT_EQ(fromRawValue<Level>(9), Level::high);
  EXPECT_EQ(allCases<Colour>(), (std::array{Colour::red, Colour::green}));
}

}  // namespace
}  // namespace orlan
