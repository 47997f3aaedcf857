#include "phones/simulated/SimulatedFiles.hpp"

#include <utility>

#include "phones/common/storageRules.hpp"

namespace orlan::sim {

namespace {

constexpr std::string_view directory = "/phone/caches";

}  // namespace

SimulatedFiles::SimulatedFiles(phone::PhoneObserver& observer,
                               const std::map<std::string, std::string>& initial, bool keepsAppended)
    : observer_(observer), keepsAppended_(keepsAppended), files_(initial.begin(), initial.end()) {}

std::string SimulatedFiles::cachesDirectory() const {
  return std::string(directory);
}

bool SimulatedFiles::exists(const std::string& path) const {
  const auto name = phone::nameInside(directory, path);
  const std::lock_guard lock(mutex_);
  return name && files_.contains(*name);
}

Result<std::string> SimulatedFiles::read(const std::string& path) const {
  const auto name = phone::nameInside(directory, path);
  const std::lock_guard lock(mutex_);
  const auto found = name ? files_.find(*name) : files_.end();
  if (found == files_.end()) return Unexpected(phone::fileErrors::notFound(path));
  if (fault_ == StorageFault::reads) return Unexpected(phone::fileErrors::failed(path, "read error"));
  return found->second;
}

Result<void> SimulatedFiles::writeAtomically(const std::string& path, std::string_view bytes) {
  const auto name = phone::nameInside(directory, path);
  if (!name) return Unexpected(phone::fileErrors::notAllowed(path));
  {
    const std::lock_guard lock(mutex_);
    if (fault_ == StorageFault::writes) return Unexpected(phone::fileErrors::failed(path, "write error"));
    files_.insert_or_assign(std::string(*name), std::string(bytes));
  }
  observer_.fileWritten(*name, bytes.size());
  return {};
}

Result<void> SimulatedFiles::append(const std::string& path, std::string_view bytes) {
  const std::lock_guard lock(mutex_);
  const auto file = fileToChange(path);
  if (!file) return Unexpected(file.error());
  if (keepsAppended_) (*file)->second.append(bytes);
  return {};
}

Result<void> SimulatedFiles::remove(const std::string& path) {
  std::string name;
  {
    const std::lock_guard lock(mutex_);
    const auto file = fileToChange(path);
    if (!file) return Unexpected(file.error());
    name = (*file)->first;
    files_.erase(*file);
  }
  observer_.fileRemoved(name);
  return {};
}

void SimulatedFiles::fail(StorageFault fault) {
  const std::lock_guard lock(mutex_);
  fault_ = fault;
}

void SimulatedFiles::change(std::string_view name, std::optional<std::string> bytes) {
  const std::lock_guard lock(mutex_);
  if (bytes) {
    files_.insert_or_assign(std::string(name), std::move(*bytes));
  } else {
    files_.erase(std::string(name));
  }
}

std::optional<std::string> SimulatedFiles::content(std::string_view name) const {
  const std::lock_guard lock(mutex_);
  const auto found = files_.find(name);
  return found == files_.end() ? std::nullopt : std::optional(found->second);
}

Result<SimulatedFiles::Files::iterator> SimulatedFiles::fileToChange(const std::string& path) {
  const auto name = phone::nameInside(directory, path);
  const auto found = name ? files_.find(*name) : files_.end();
  if (found == files_.end()) return Unexpected(phone::fileErrors::notFound(path));
  if (fault_ == StorageFault::writes) return Unexpected(phone::fileErrors::failed(path, "write error"));
  return found;
}

}  // namespace orlan::sim
