#include "phones/linux/XmlText.hpp"

#include <algorithm>

namespace orlan::linuxphone::xml {

Result<void, std::string> load(pugi::xml_document& document, std::string_view bytes) {
  const auto result =
      document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
  if (result) return {};
  return Unexpected(place(bytes, result.offset) + result.description());
}

std::string place(std::string_view bytes, std::ptrdiff_t offset) {
  const auto start = bytes.substr(0, 4);
  if (offset < 0 || start.find('\0') != start.npos || start.starts_with("\xff\xfe") ||
      start.starts_with("\xfe\xff")) {
    return {};
  }
  const auto before = bytes.substr(0, static_cast<std::size_t>(offset));
  return "line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ": ";
}

std::string place(std::string_view bytes, const pugi::xml_node& node) {
  return place(bytes, node.offset_debug());
}

std::string_view localName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  const auto colon = name.rfind(':');
  return colon == name.npos ? name : name.substr(colon + 1);
}

std::string text(const pugi::xml_node& node) {
  std::string all;
  for (const auto& child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) all += child.value();
  }
  return all;
}

}  // namespace orlan::linuxphone::xml
