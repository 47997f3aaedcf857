#include "architecture/Pages.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace orlan::architecture {
namespace {

constexpr std::string_view ellipsis = "…";
constexpr std::size_t close = 200;  // bytes of source between two pieces of one line

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  std::istringstream stream{std::string(text)};
  for (std::string line; std::getline(stream, line);) lines.push_back(std::move(line));
  return lines;
}

/// The page without its blocks of code.
std::vector<std::string> proseOf(std::string_view page) {
  std::vector<std::string> prose;
  bool inCode = false;
  for (const std::string& line : linesOf(page)) {
    const bool fence = line.starts_with("```");
    if (fence) inCode = !inCode;
    if (!fence && !inCode) prose.push_back(line);
  }
  return prose;
}

/// "The number 20, twice" becomes "the-number-20-twice".
std::string anchorOf(std::string_view heading) {
  std::string anchor;
  for (const char c : heading) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == ' ') anchor += '-';
    if (byte >= 0x80 || std::isalnum(byte) != 0 || c == '-' || c == '_') {
      anchor += static_cast<char>(std::tolower(byte));
    }
  }
  return anchor;
}

bool hasAnchor(std::string_view page, const std::string& anchor) {
  const auto prose = proseOf(page);
  return std::any_of(prose.begin(), prose.end(), [&](const std::string& line) {
    const auto level = line.find_first_not_of('#');
    return level > 0 && level < line.size() && line[level] == ' ' &&
           anchorOf(line.substr(level + 1)) == anchor;
  });
}

std::vector<std::string> linksOf(std::string_view page) {
  static const std::regex link(R"(\]\(([^)\s]+)\))");
  std::string prose;
  for (const std::string& line : proseOf(page)) prose.append(line).append("\n");
  std::vector<std::string> targets;
  for (std::sregex_iterator at(prose.begin(), prose.end(), link), end; at != end; ++at) {
    targets.push_back((*at)[1]);
  }
  return targets;
}

std::vector<std::string> piecesOf(std::string_view line) {
  std::vector<std::string> pieces;
  while (!line.empty()) {
    const auto end = std::min(line.find(ellipsis), line.size());
    if (end > 0) pieces.emplace_back(line.substr(0, end));
    line.remove_prefix(std::min(end + ellipsis.size(), line.size()));
  }
  return pieces;
}

bool follows(const std::vector<std::string>& pieces, const std::string& source) {
  for (auto first = source.find(pieces[0]); first != std::string::npos;
       first = source.find(pieces[0], first + 1)) {
    auto end = first + pieces[0].size();
    std::size_t i = 1;
    for (; i < pieces.size(); ++i) {
      const auto next = source.find(pieces[i], end);
      if (next == std::string::npos || next - end > close) break;
      end = next + pieces[i].size();
    }
    if (i == pieces.size()) return true;
  }
  return false;
}

}  // namespace

Sources readPages() {
  const std::filesystem::path root = ORLAN_SOURCE_DIR;
  Sources pages;
  for (std::filesystem::recursive_directory_iterator entry(root), end; entry != end; ++entry) {
    const auto name = entry->path().filename().string();
    if (entry->is_directory() && (name.starts_with(".") || name == "build"))
      entry.disable_recursion_pending();
    if (entry->path().extension() != ".md") continue;
    std::stringstream text;
    text << std::ifstream(entry->path()).rdbuf();
    pages[entry->path().lexically_relative(root).generic_string()] = text.str();
  }
  return pages;
}

std::vector<std::string> brokenLinks(const Sources& pages,
                                     const std::function<bool(const std::string&)>& exists) {
  std::vector<std::string> broken;
  for (const auto& [page, text] : pages) {
    for (const std::string& target : linksOf(text)) {
      if (target.find("://") != std::string::npos || target.starts_with("mailto:")) continue;
      const auto hash = std::min(target.find('#'), target.size());
      const auto folder = std::filesystem::path(page).parent_path();
      const auto path =
          hash == 0 ? page : (folder / target.substr(0, hash)).lexically_normal().generic_string();
      const auto other = pages.find(path);
      const bool leads = hash == target.size()
                             ? exists(path)
                             : other != pages.end() && hasAnchor(other->second, target.substr(hash + 1));
      if (!leads) broken.push_back(page + ": " + target);
    }
  }
  return broken;
}

std::vector<std::string> quotedInTables(std::string_view page) {
  static const std::regex quote("`([^`]+)`");
  std::vector<std::string> quoted;
  for (const std::string& line : proseOf(page)) {
    if (!line.starts_with("| ")) continue;
    const std::string first = line.substr(2, line.find(" | ", 2) - 2);
    for (std::sregex_iterator at(first.begin(), first.end(), quote), end; at != end; ++at) {
      quoted.push_back((*at)[1]);
    }
  }
  return quoted;
}

std::vector<std::string> namesIn(std::string_view page) {
  static const std::regex name("`(?:[A-Za-z_]\\w*::)*([A-Za-z_]\\w*)(?:\\((?:…)?\\))?`");
  std::vector<std::string> names;
  for (const std::string& line : proseOf(page)) {
    for (std::sregex_iterator at(line.begin(), line.end(), name), end; at != end; ++at) {
      names.push_back((*at)[1]);
    }
  }
  return names;
}

Sources withJoinedLiterals(Sources sources) {
  static const std::regex seam("\"\\s*\n\\s*\"");
  for (auto& [file, text] : sources) text = std::regex_replace(text, seam, "");
  return sources;
}

bool isWritten(std::string_view line, const Sources& sources) {
  const auto pieces = piecesOf(line);
  return !pieces.empty() && std::any_of(sources.begin(), sources.end(),
                                        [&](const auto& source) { return follows(pieces, source.second); });
}

std::vector<std::string> codeBlocks(std::string_view page, std::string_view language) {
  std::vector<std::string> blocks;
  bool wanted = false;
  bool inCode = false;
  for (const std::string& line : linesOf(page)) {
    if (line.starts_with("```")) {
      inCode = !inCode;
      wanted = inCode && std::string_view(line).substr(3) == language;
      if (wanted) blocks.emplace_back();
    } else if (wanted) {
      blocks.back().append(withoutWhiteSpace(line));
    }
  }
  return blocks;
}

std::string withoutWhiteSpace(std::string_view text) {
  std::string out;
  std::copy_if(text.begin(), text.end(), std::back_inserter(out),
               [](char c) { return c != ' ' && c != '\n'; });
  return out;
}

}  // namespace orlan::architecture
