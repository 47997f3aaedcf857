#include "architecture/SourceTree.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace orlan::architecture {
namespace {

std::string_view withoutBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// The line without its comments; `inside` says whether a block comment goes on from or to another line.
std::string withoutComments(std::string_view line, bool& inside) {
  std::string out;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const std::string_view rest = line.substr(i);
    if (inside) {
      if (!rest.starts_with("*/")) continue;
      inside = false;
      ++i;
    } else if (rest.starts_with("/*")) {
      inside = true;
      ++i;
    } else if (rest.starts_with("//")) {
      break;
    } else {
      out += line[i];
    }
  }
  return out;
}

/// Empty target when the line is no include directive.
Include directive(std::string_view line) {
  line = withoutBlanks(line);
  if (!line.starts_with('#')) return {};
  line = withoutBlanks(line.substr(1));
  if (!line.starts_with("include")) return {};
  line = withoutBlanks(line.substr(std::string_view("include").size()));
  const bool quoted = line.starts_with('"');
  if (!quoted && !line.starts_with('<')) return {};
  return {0, std::string(line.substr(1, line.find(quoted ? '"' : '>', 1) - 1)), quoted};
}

}  // namespace

std::vector<Include> includesOf(std::string_view source) {
  std::vector<Include> found;
  bool inComment = false;
  int number = 0;
  while (!source.empty()) {
    const std::string_view line = source.substr(0, source.find('\n'));
    source.remove_prefix(std::min(line.size() + 1, source.size()));
    ++number;
    Include include = directive(withoutComments(line, inComment));
    if (include.target.empty()) continue;
    include.line = number;
    found.push_back(std::move(include));
  }
  return found;
}

Sources readSources(const std::vector<std::string>& folders) {
  const std::filesystem::path root = ORLAN_SOURCE_DIR;
  Sources sources;
  for (const std::string& folder : folders) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
      const auto& path = entry.path();
      if (path.extension() != ".cpp" && path.extension() != ".hpp" && path.extension() != ".h") continue;
      std::stringstream text;
      text << std::ifstream(path).rdbuf();
      sources[path.lexically_relative(root).generic_string()] = text.str();
    }
  }
  return sources;
}

}  // namespace orlan::architecture
