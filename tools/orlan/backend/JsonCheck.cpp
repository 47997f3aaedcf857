#include "tools/orlan/backend/JsonCheck.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace orlan::devbackend {
namespace {

std::string_view nameOf(json::Kind kind) {
  switch (kind) {
    case json::Kind::null:
      return "null";
    case json::Kind::boolean:
      return "a boolean";
    case json::Kind::integer:
      return "an integer";
    case json::Kind::real:
      return "a number with a fraction";
    case json::Kind::string:
      return "a string";
    case json::Kind::array:
      return "an array";
    case json::Kind::object:
      return "an object";
  }
  return "nothing";
}

}  // namespace

bool checkMembers(json::Node node, std::string_view path, std::span<const ExpectedMember> expected,
                  Problems& problems) {
  if (node.kind() != json::Kind::object) {
    problems.push_back(fmt::format("{}: expected an object, found {}", path, nameOf(node.kind())));
    return false;
  }
  std::vector<int> seen(expected.size());
  node.members([&](std::string_view key, json::Node value) {
    const auto known = std::find_if(expected.begin(), expected.end(),
                                    [&](const ExpectedMember& member) { return member.key == key; });
    if (known == expected.end()) {
      problems.push_back(fmt::format("{}: unknown key {}", path, excerpt(key)));
      return true;
    }
    if (++seen[static_cast<std::size_t>(known - expected.begin())] == 2) {
      problems.push_back(fmt::format("{}.{}: there twice", path, key));
    }
    if (value.kind() != known->kind) {
      problems.push_back(
          fmt::format("{}.{}: expected {}, found {}", path, key, nameOf(known->kind), nameOf(value.kind())));
    }
    return true;
  });
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (seen[i] == 0 && expected[i].required) {
      problems.push_back(fmt::format("{}.{}: missing", path, expected[i].key));
    }
  }
  return true;
}

std::optional<json::Document> parseObject(const Request& request, std::span<const ExpectedMember> expected,
                                          Problems& problems) {
  if (request.body.empty()) {
    problems.push_back("body: empty, expected a JSON object");
    return std::nullopt;
  }
  auto document = json::Document::parse(request.body);
  if (!document) {
    problems.push_back(fmt::format("body: not JSON: {}", document.error().description));
    return std::nullopt;
  }
  if (!checkMembers(document->root(), "body", expected, problems)) return std::nullopt;
  return std::move(document).value();
}

std::optional<json::Node> member(json::Node object, std::string_view key) {
  std::optional<json::Node> found;
  object.members([&](std::string_view name, json::Node value) {
    if (name == key) found = value;
    return true;
  });
  return found;
}

std::optional<std::string_view> stringMember(json::Node object, std::string_view key) {
  const auto value = member(object, key);
  return value ? value->string() : std::nullopt;
}

void expectText(json::Node object, std::string_view key, std::string_view value, Problems& problems) {
  const auto found = stringMember(object, key);
  if (found && *found != value) {
    problems.push_back(fmt::format("body.{}: expected \"{}\", found {}", key, value, excerpt(*found)));
  }
}

void expectFilled(json::Node object, std::span<const std::string_view> keys, Problems& problems) {
  for (const auto key : keys) {
    const auto found = stringMember(object, key);
    if (found && found->empty()) problems.push_back(fmt::format("body.{}: empty", key));
  }
}

}  // namespace orlan::devbackend
