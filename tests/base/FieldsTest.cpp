#include <gtest/gtest.h>

#include <array>

#include "orlan/base/Fields.hpp"

namespace orlan {
namespace {

enum class Colour { red, green };
enum class Level { low, high };

struct Point {
  double latitude = 0.0;
  std::optional<std::string> name = std::nullopt;

  friend bool operator==(const Point&, const Point&) = default;
};

struct Sample {
  std::int64_t id = 0;
  bool on = false;
  std::string title;
  std::vector<Point> points;
  Colour colour = Colour::red;
  std::optional<Level> level;
  std::map<std::string, Point> named;

  friend bool operator==(const Sample&, const Sample&) = default;
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
  static constexpr std::tuple list{field("id", &Sample::id),         field("on", &Sample::on),
                                   field("title", &Sample::title),   field("points", &Sample::points),
                                   field("colour", &Sample::colour), field("level", &Sample::level),
                                   field("named", &Sample::named)};
};

namespace {

const std::string complete =
    R"({"id":1,"on":true,"title":"t","points":[{"latitude":1.5},{"latitude":2,"name":"n"}],)"
    R"("colour":"GREEN","level":9,"named":{"a":{"latitude":3}}})";

template <class T>
concept OwnsWhatItReads = requires {
  json::decodeText<T>("");
};
static_assert(OwnsWhatItReads<std::map<std::string, Sample>>);
static_assert(!OwnsWhatItReads<std::vector<std::optional<std::string_view>>>);

TEST(Fields, DecodeAndEncodeByOneDeclaration) {
  const auto sample = json::decodeText<Sample>(complete);
  ASSERT_TRUE(sample) << sample.error().description;
  const std::vector<Point> points{{1.5}, {2.0, "n"}};
  EXPECT_EQ(*sample, (Sample{1, true, "t", points, Colour::green, Level::high, {{"a", {3.0}}}}));
  EXPECT_EQ(json::encodeText(*sample).value_or(""),
            R"({"id":1,"on":true,"title":"t","points":[{"latitude":1.5},{"latitude":2.0,"name":"n"}],)"
            R"("colour":"GREEN","level":9,"named":{"a":{"latitude":3.0}}})");
}

TEST(Fields, AreFoundInAnyOrderAndTheLastOfEachCounts) {
  const std::pair<const char*, Point> rows[] = {
      {R"({"name":"n","x":[{}],"latitude":1,"y":null,"z":1e999})", {1.0, "n"}},
      {R"({"latitude":1})", {1.0}},
      {R"({"latitude":1,"name":null})", {1.0}},
      {R"({"latitude":1,"name":"a","latitude":2,"name":null})", {2.0}},
  };
  for (const auto& [text, point] : rows) EXPECT_EQ(json::decodeText<Point>(text).value(), point) << text;
  EXPECT_EQ(json::encodeText(Point{1.0}).value(), R"({"latitude":1.0})");

  using Points = std::map<std::string, Point>;
  EXPECT_EQ(json::decodeText<Points>(R"({"p":{"latitude":1,"name":"a"},"p":{"latitude":2}})").value(),
            (Points{{"p", {2.0}}}));
  std::string text = complete;
  text.insert(1, R"("points":[{"latitude":8}],"named":{"z":{"latitude":1}},)");
  text.insert(text.size() - 1, R"(,"named":{})");
  const Sample sample = json::decodeText<Sample>(text).value();
  EXPECT_EQ(sample.points.size(), 2U) << "nothing of the first shines through";
  EXPECT_EQ(sample.named, Points{});
}

TEST(Fields, ErrorsNameThePath) {
  struct Row {
    std::string from, to, error;
  };
  const Row rows[] = {
      {"\"id\":1,", "", "id: missing"},
      {"\"id\":1", "\"id\":null", "id: expected an integer, found null"},
      {"\"id\":1", "\"id\":1.5", "id: expected an integer, found a number"},
      {"\"on\":true", "\"on\":1", "on: expected a boolean, found an integer"},
      {"\"latitude\":1.5", "\"latitude\":1e999", "points[0].latitude: expected a number, found a number"},
      {"\"latitude\":1.5", "\"latitude\":\"x\",\"latitude\":2",
       "points[0].latitude: expected a number, found a string"},
      {"\"latitude\":1.5", "\"latitude\":[]", "points[0].latitude: expected a number, found an array"},
      {"{\"latitude\":2,\"name\":\"n\"}", "7", "points[1]: expected an object, found an integer"},
      {"\"GREEN\"", "\"BLUE\"", "colour: expected a known value, found a string"},
      {"\"level\":9", "\"level\":2", "level: expected a known value, found an integer"},
      {"{\"a\":{\"latitude\":3}}", "{\"a\\n\":{}}", "named.a\\n.latitude: missing"},
      {"{\"a\":{\"latitude\":3}}", "[]", "named: expected an object, found an array"},
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
  EXPECT_EQ(json::decodeText<Point>("[1]").error().description, "expected an object, found an array");
  using Matrix = std::vector<std::vector<std::int64_t>>;
  EXPECT_EQ(json::decodeText<Matrix>("[[1],[2,true]]").error().description,
            "[1][1]: expected an integer, found a boolean");
}

}  // namespace
}  // namespace orlan
