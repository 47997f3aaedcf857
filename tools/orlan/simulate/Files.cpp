#include "tools/orlan/simulate/Files.hpp"

#include <filesystem>

#include "phones/linux/disk.hpp"

namespace orlan::simulate {

std::string Files::resolved(const std::string& path) const {
  return (std::filesystem::path(directory_) / path).string();
}

Result<std::string> Files::read(const std::string& path) const {
  auto bytes = linuxphone::disk::read(resolved(path));
  if (!bytes) return Unexpected(Error{"Scenario", -1, bytes.error().message()});
  return std::move(*bytes);
}

}  // namespace orlan::simulate
