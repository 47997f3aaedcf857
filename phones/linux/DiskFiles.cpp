#include "phones/linux/DiskFiles.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "phones/common/storageRules.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

Error failure(const std::string& path, std::error_code why) {
  if (why == std::errc::no_such_file_or_directory) return phone::fileErrors::notFound(path);
  return phone::fileErrors::failed(path, why.message());
}

}  // namespace

DiskFiles::DiskFiles(std::string cachesDirectory, phone::PhoneObserver& observer)
    : directory_(std::move(cachesDirectory)), observer_(observer) {
  disk::makeDirectory(directory_);
  disk::clearAbandoned(directory_);
}

bool DiskFiles::exists(const std::string& path) const {
  struct stat status = {};
  return phone::nameInside(directory_, path) && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

Result<std::string> DiskFiles::read(const std::string& path) const {
  if (!phone::nameInside(directory_, path)) return Unexpected(phone::fileErrors::notFound(path));
  auto bytes = disk::read(path);
  if (!bytes) return Unexpected(failure(path, bytes.error()));
  return std::move(*bytes);
}

Result<void> DiskFiles::writeAtomically(const std::string& path, std::string_view bytes) {
  const auto name = phone::nameInside(directory_, path);
  if (!name) return Unexpected(phone::fileErrors::notAllowed(path));
  if (const auto written = disk::replace(path, bytes); !written) {
    return Unexpected(failure(path, written.error()));
  }
  observer_.fileWritten(*name, bytes.size());
  return {};
}

Result<void> DiskFiles::append(const std::string& path, std::string_view bytes) {
  if (!phone::nameInside(directory_, path)) return Unexpected(phone::fileErrors::notFound(path));
  if (const auto written = disk::append(path, bytes); !written) {
    return Unexpected(failure(path, written.error()));
  }
  return {};
}

Result<void> DiskFiles::remove(const std::string& path) {
  const auto name = phone::nameInside(directory_, path);
  if (!name) return Unexpected(phone::fileErrors::notFound(path));
  if (::unlink(path.c_str()) != 0) {
    return Unexpected(failure(path, {errno, std::generic_category()}));
  }
  observer_.fileRemoved(*name);
  return {};
}

}  // namespace orlan::linuxphone
