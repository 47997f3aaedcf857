#include "architecture/Rules.hpp"

#include <algorithm>
#include <set>
#include <sstream>

namespace orlan::architecture {
namespace {

using Names = std::set<std::string, std::less<>>;

const Names everyFloor = {"orlan/base",      "orlan/platform",      "orlan/logging",
                          "orlan/campaigns", "orlan/surveys",       "orlan/backend",
                          "orlan/geofence",  "orlan/notifications", "orlan/sdk"};

Names plus(Names names, const Names& more) {
  names.insert(more.begin(), more.end());
  return names;
}

/// What each folder may include besides itself.
const std::map<std::string, Names, std::less<>>& floors() {
  static const auto table = [] {
    const Names platform = {"orlan/base"};
    const Names logging = plus(platform, {"orlan/platform"});
    const Names records = plus(logging, {"orlan/logging"});
    const Names backend = plus(records, {"orlan/campaigns", "orlan/surveys"});
    const Names services = plus(backend, {"orlan/backend"});
    const Names phone = plus(logging, {"phones/common"});
    return std::map<std::string, Names, std::less<>>{
        {"orlan/base", {}},
        {"orlan/platform", platform},
        {"orlan/logging", logging},
        {"orlan/campaigns", records},
        {"orlan/surveys", records},
        {"orlan/backend", backend},
        {"orlan/geofence", services},
        {"orlan/notifications", services},
        {"orlan/sdk", everyFloor},
        {"orlan", everyFloor},  // what a host includes
        {"orlan/c", everyFloor},
        {"phones/common", logging},
        {"phones/simulated", phone},
        {"phones/linux", phone},
        {"phones/c", plus(phone, {"orlan/c", "phones/linux"})},
        {"tools/orlan", plus(everyFloor, {"orlan", "phones/common", "phones/simulated", "phones/linux"})},
    };
  }();
  return table;
}

const Names cHeaders = {"assert.h", "ctype.h",  "errno.h",  "float.h",   "inttypes.h", "limits.h",
                        "locale.h", "math.h",   "stdarg.h", "stdbool.h", "stddef.h",   "stdint.h",
                        "stdio.h",  "stdlib.h", "string.h", "time.h",    "wchar.h"};

/// Time, chance, files, threads and the terminal reach the library through its phone only. The phone made of
/// a C host's functions stands in orlan/c.
const Names phoneMatters = {"condition_variable", "filesystem", "fstream",    "future",
                            "iostream",           "random",     "stop_token", "thread"};

struct Library {
  std::string_view header;              // a name or, with a slash at its end, a folder
  std::vector<std::string_view> users;  // files, or folders with a slash
};
const Library libraries[] = {
    {"simdjson.h", {"orlan/base/Document.cpp"}},
    {"utf8proc.h", {"orlan/base/"}},
    {"GeographicLib/", {"orlan/platform/"}},
    {"fmt/", {"orlan/", "phones/", "tools/"}},
    {"curl/", {"phones/linux/", "tools/"}},
    {"sqlite3.h", {"phones/linux/", "tools/"}},
    {"plist/", {"phones/linux/", "tools/"}},
    {"pugixml.hpp", {"phones/linux/", "tools/"}},
    {"CLI/", {"tools/"}},
    {"httplib.h", {"tools/"}},
    // Whatever else has a suffix or a folder is the operating system's.
    {"", {"phones/linux/", "tools/"}},
};

bool matches(std::string_view path, std::string_view nameOrFolder) {
  if (nameOrFolder.empty()) return true;
  return nameOrFolder.ends_with('/') ? path.starts_with(nameOrFolder) : path == nameOrFolder;
}

/// "orlan/base" of "orlan/base/text.cpp", "orlan" of "orlan/orlan.hpp".
std::string_view folderOf(std::string_view path) {
  const auto first = path.find('/');
  if (first == std::string_view::npos) return {};
  const auto second = path.find('/', first + 1);
  return path.substr(0, second == std::string_view::npos ? first : second);
}

bool isHeader(std::string_view file) {
  return !file.ends_with(".cpp");
}

std::optional<std::string> ownFault(std::string_view file, const std::string& target) {
  const std::string_view from = folderOf(file);
  const std::string_view to = folderOf(target);
  const auto rule = floors().find(from);
  if (rule == floors().end()) return "the folder has no floor";
  if (!floors().contains(to)) return "not a path from the root of the project: \"" + target + "\"";
  if (from == to || rule->second.contains(to)) return std::nullopt;
  return std::string(from) + " must not include " + std::string(to) + ": \"" + target + "\"";
}

std::optional<std::string> foreignFault(std::string_view file, const std::string& target) {
  const bool library = file.starts_with("orlan/");
  const bool standard = target.find_first_of("./") == std::string::npos || cHeaders.contains(target);
  if (standard) {
    if (library && folderOf(file) != "orlan/c" && phoneMatters.contains(target))
      return "only phones may include <" + target + ">";
    return std::nullopt;
  }
  if (library && isHeader(file)) return "a header of the library must not include <" + target + ">";
  const auto* const known = std::find_if(std::begin(libraries), std::end(libraries),
                                         [&](const Library& each) { return matches(target, each.header); });
  const bool allowed = std::any_of(known->users.begin(), known->users.end(),
                                   [&](std::string_view user) { return matches(file, user); });
  if (allowed) return std::nullopt;
  return "must not include <" + target + ">";
}

std::string at(const std::string& file, int line, std::string_view what) {
  return file + ":" + std::to_string(line) + ": " + std::string(what);
}

/// Depth first; `path` is the chain from the start to where we are.
bool findCycle(const Sources& sources, const std::string& file, std::vector<std::string>& path, Names& done) {
  if (done.contains(file)) return false;
  const auto before = std::find(path.begin(), path.end(), file);
  if (before != path.end()) {
    path.erase(path.begin(), before);
    path.push_back(file);
    return true;
  }
  path.push_back(file);
  for (const Include& include : includesOf(sources.at(file))) {
    if (sources.contains(include.target) && findCycle(sources, include.target, path, done)) return true;
  }
  path.pop_back();
  done.insert(file);
  return false;
}

}  // namespace

std::optional<std::string> includeFault(const std::string& file, const Include& include) {
  return include.quoted ? ownFault(file, include.target) : foreignFault(file, include.target);
}

std::vector<std::string> includeFaults(const Sources& sources) {
  std::vector<std::string> faults;
  for (const auto& [file, text] : sources) {
    for (const Include& include : includesOf(text)) {
      if (const auto fault = includeFault(file, include)) {
        faults.push_back(at(file, include.line, *fault));
      } else if (include.quoted && !sources.contains(include.target)) {
        faults.push_back(at(file, include.line, "there is no \"" + include.target + "\""));
      }
    }
  }
  return faults;
}

std::vector<std::string> includeCycle(const Sources& sources) {
  Names done;
  for (const auto& [file, text] : sources) {
    std::vector<std::string> path;
    if (findCycle(sources, file, path, done)) return path;
  }
  return {};
}

std::vector<std::string> sharedFaults(const Sources& sources) {
  std::vector<std::string> faults;
  for (const auto& [file, text] : sources) {
    if (!file.starts_with("orlan/") || file.starts_with("orlan/sdk/")) continue;
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
      line.resize(std::min(line.size(), line.find("//")));
      line.resize(line.find_last_not_of(" \t\r") + 1);
      const bool declares =
          isHeader(file) && line.find("static ") != std::string::npos && line.ends_with("& shared();");
      if (line.find("shared()") == std::string::npos || declares) continue;
      faults.push_back(at(file, number, "below sdk/ nothing reaches for shared()"));
    }
  }
  return faults;
}

}  // namespace orlan::architecture
