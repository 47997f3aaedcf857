#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"

/// What our readers of XML files have in common.
namespace orlan::linuxphone::xml {

/// Parses a document in whatever encoding it says it has. The error is one line and says where, if known.
[[nodiscard]] Result<void, std::string> load(pugi::xml_document& document, std::string_view bytes);

/// "line 12: ", or nothing where lines cannot be counted (UTF-16). `offset` as pugixml gives it.
[[nodiscard]] std::string place(std::string_view bytes, std::ptrdiff_t offset);
[[nodiscard]] std::string place(std::string_view bytes, const pugi::xml_node& node);

/// The name without a namespace's prefix.
[[nodiscard]] std::string_view localName(const pugi::xml_node& node);

/// All character data directly inside the node.
[[nodiscard]] std::string text(const pugi::xml_node& node);

}  // namespace orlan::linuxphone::xml
