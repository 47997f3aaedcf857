#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The project's own sources as text, and what they include.
namespace orlan::architecture {

struct Include {
  int line = 0;        // from 1
  std::string target;  // between the quotes or angle brackets
  bool quoted = false;

  friend bool operator==(const Include&, const Include&) = default;
};

/// Every include directive outside of comments.
[[nodiscard]] std::vector<Include> includesOf(std::string_view source);

/// Text by path, such as "orlan/base/text.cpp".
using Sources = std::map<std::string, std::string>;

/// The C++ sources and headers below `folders` of the checkout.
[[nodiscard]] Sources readSources(const std::vector<std::string>& folders);

}  // namespace orlan::architecture
