#include "phones/linux/XmlPropertyList.hpp"

#include <algorithm>

#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"
#include "phones/linux/IsoTime.hpp"
#include "phones/linux/XmlText.hpp"

// A property list's XML is read here and not by libplist, which takes "abc" for the number 0, gives negative
// integers back unsigned, obeys the process's locale and cannot say where a mistake stands.
namespace orlan::linuxphone {
namespace {

using Read = Result<json::Value, std::string>;

constexpr int deepest = 100;  // levels

pugi::xml_node firstElement(pugi::xml_node node) {
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  return node;
}

std::optional<json::Value> integer(std::string_view digits) {
  if (const auto number = text::toInteger(digits)) return json::Value(*number);
  if (digits.find_first_not_of("+-0123456789") != digits.npos) return std::nullopt;
  const auto beyondRange = text::toDouble(digits);
  return beyondRange ? std::optional(json::Value(*beyondRange)) : std::nullopt;
}

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  Read value(const pugi::xml_node& node, int depth) const {
    if (depth > deepest) return wrong(node, "nested too deeply");
    const std::string_view kind = node.name();
    if (kind == "dict") return dictionary(node, depth);
    if (kind == "array") return array(node, depth);
    if (kind == "true") return json::Value(true);
    if (kind == "false") return json::Value(false);
    return scalar(node, kind, xml::text(node));
  }

  Read wrong(const pugi::xml_node& node, const std::string& what) const {
    return Unexpected(xml::place(bytes_, node) + what);
  }

 private:
  Read dictionary(const pugi::xml_node& node, int depth) const {
    json::Object members;
    for (auto key = firstElement(node.first_child()); key;) {
      if (std::string_view(key.name()) != "key") return wrong(key, "expected <key>");
      const auto member = firstElement(key.next_sibling());
      if (!member) return wrong(key, "a key without a value");
      auto read = value(member, depth + 1);
      if (!read) return read;
      members.set(xml::text(key), std::move(*read));
      key = firstElement(member.next_sibling());
    }
    return json::Value(std::move(members));
  }

  Read array(const pugi::xml_node& node, int depth) const {
    json::Array elements;
    for (auto child = firstElement(node.first_child()); child; child = firstElement(child.next_sibling())) {
      auto read = value(child, depth + 1);
      if (!read) return read;
      elements.push_back(std::move(*read));
    }
    return json::Value(std::move(elements));
  }

  Read scalar(const pugi::xml_node& node, std::string_view kind, std::string content) const {
    if (kind == "string") {
      if (!text::isUtf8(content)) return wrong(node, "not valid text");
      return json::Value(std::move(content));
    }
    if (kind == "data") {
      std::erase_if(content, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
      if (auto bytes = text::fromBase64(content)) return json::Value(Bytes{std::move(*bytes)});
      return wrong(node, "not base64");
    }
    const std::string_view trimmed = text::trimmed(content);
    if (kind == "integer") {
      if (const auto number = integer(trimmed)) return *number;
      return wrong(node, "not an integer");
    }
    if (kind == "real") {
      if (const auto number = text::toDouble(trimmed)) return json::Value(*number);
      return wrong(node, "not a number");
    }
    if (kind == "date") {
      if (const auto time = parseIsoTime(trimmed)) return json::Value(isoDateTime(*time));
      return wrong(node, "not a date");
    }
    return wrong(node, "not an element of a property list: <" + std::string(kind) + ">");
  }

  std::string_view bytes_;
};

}  // namespace

Read readXmlPropertyList(std::string_view bytes) {
  pugi::xml_document document;
  if (const auto loaded = xml::load(document, bytes); !loaded) return Unexpected(loaded.error());
  const auto root = document.document_element();
  const Reader reader(bytes);
  if (std::string_view(root.name()) != "plist") return reader.wrong(root, "not a property list");
  const auto content = firstElement(root.first_child());
  if (!content) return reader.wrong(root, "the property list is empty");
  return reader.value(content, 1);
}

}  // namespace orlan::linuxphone
