#include "phones/linux/directories.hpp"

#include <cstdlib>
#include <filesystem>

namespace orlan::linuxphone {
namespace {

std::string absolute(const std::string& path) {
  std::error_code failed;
  auto whole = std::filesystem::absolute(path, failed).lexically_normal().string();
  if (failed) whole = path;
  while (whole.size() > 1 && whole.back() == '/') whole.pop_back();
  return whole;
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

Directories directories(const std::string& home, const std::string& application) {
  if (!home.empty()) {
    const std::string base = absolute(home);
    return {base + "/cache", base + "/data"};
  }
  auto base = [&](const char* variable, const char* belowHome) {
    const std::string stated = environment(variable);
    if (stated.starts_with('/')) return absolute(stated);
    return absolute(environment("HOME") + "/" + belowHome);
  };
  return {base("XDG_CACHE_HOME", ".cache") + "/" + application,
          base("XDG_DATA_HOME", ".local/share") + "/" + application};
}

}  // namespace orlan::linuxphone
