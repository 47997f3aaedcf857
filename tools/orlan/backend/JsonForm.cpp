#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "tools/orlan/backend/BodyForms.hpp"

namespace orlan::devbackend {
namespace {

std::string_view nameOf(json::Kind kind) {
  switch (kind) {
    case json::Kind::integer:
      return "an integer";
    case json::Kind::array:
      return "an array";
    case json::Kind::object:
      return "an object";
    default:
      return "a string";
  }
}

void checkNode(json::Node node, const std::string& path, const Field& field, Problems& problems);

void checkMembers(json::Node object, const std::string& path, std::span<const Field> expected,
                  Problems& problems) {
  std::vector<int> seen(expected.size());
  object.members([&](std::string_view key, json::Node value) {
    const auto known =
        std::find_if(expected.begin(), expected.end(), [&](const Field& field) { return field.name == key; });
    if (known == expected.end()) {
      problems.push_back(fmt::format("{}: unknown key {}", path, excerpt(key)));
      return true;
    }
    const auto place = fmt::format("{}.{}", path, key);
    if (++seen[static_cast<std::size_t>(known - expected.begin())] == 2) {
      problems.push_back(fmt::format("{}: there twice", place));
    }
    checkNode(value, place, *known, problems);
    return true;
  });
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (seen[i] > 0 || !expected[i].isRequired) continue;
    problems.push_back(fmt::format("{}.{}: missing", path, expected[i].name));
  }
}

void checkNode(json::Node node, const std::string& path, const Field& field, Problems& problems) {
  if (node.kind() != field.kind) {
    problems.push_back(fmt::format("{}: expected {}, found {}", path, nameOf(field.kind), node.kindName()));
    return;
  }
  if (field.kind == json::Kind::object) return checkMembers(node, path, field.content, problems);
  const auto text = node.string();
  checkValue(field.rule, path, text ? *text : json::print(node.value()), problems);
  std::size_t index = 0;
  node.elements([&](json::Node element) {
    checkNode(element, fmt::format("{}[{}]", path, index++), field.content.front(), problems);
    return true;
  });
}

}  // namespace

std::optional<json::Document> checkJson(const Request& request, std::span<const Field> members,
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
  checkNode(document->root(), "body", {.kind = json::Kind::object, .content = members}, problems);
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

std::optional<std::string_view> textMember(json::Node object, std::string_view key) {
  const auto value = member(object, key);
  return value ? value->string() : std::nullopt;
}

}  // namespace orlan::devbackend
