#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"
#include "phones/c/TableStorage.hpp"
#include "phones/common/storageRules.hpp"

namespace orlan::c {
namespace {

Unexpected<Error> failed(const std::string& path) {
  return Unexpected(phone::fileErrors::failed(path, "not possible"));
}

Result<void> outcome(bool worked, const std::string& path) {
  return worked ? Result<void>() : Result<void>(failed(path));
}

/// Bytes that are lent without a copy: whoever stores megabytes need not have them twice.
orlan_string lentBytes(std::string_view bytes) {
  return {bytes.data() == nullptr ? "" : bytes.data(), bytes.size()};
}

}  // namespace

TableFiles::TableFiles(const orlan_file_functions& table)
    : table_(table),
      caches_(table.exists == nullptr ? std::string("/memory")
                                      : std::string(text(table.caches_directory, "caches_directory"))) {
  const int there = (table.exists != nullptr) + (table.read != nullptr) + (table.write != nullptr) +
                    (table.append != nullptr) + (table.remove != nullptr);
  if (there != 0 && there != 5) throw Misuse{ORLAN_INVALID_ARGUMENT, "files: all functions are needed"};
  if (caches_.empty()) throw Misuse{ORLAN_INVALID_ARGUMENT, "files: caches_directory is needed"};
}

bool TableFiles::isOurs(const std::string& path) const {
  return phone::nameInside(caches_, path).has_value();
}

bool TableFiles::exists(const std::string& path) const {
  if (!isOurs(path)) return false;
  if (table_.exists != nullptr) return ask(table_.exists, table_.context, lent(path));
  const std::lock_guard lock(mutex_);
  return memory_.contains(path);
}

Result<std::string> TableFiles::read(const std::string& path) const {
  if (!isOurs(path)) return failed(path);
  if (table_.read != nullptr) {
    orlan_answer answer;
    if (!ask(table_.read, table_.context, lent(path), &answer)) return failed(path);
    return std::move(answer.bytes);
  }
  const std::lock_guard lock(mutex_);
  const auto found = memory_.find(path);
  if (found == memory_.end()) return failed(path);
  return found->second;
}

Result<void> TableFiles::writeAtomically(const std::string& path, std::string_view bytes) {
  if (!isOurs(path)) return failed(path);
  if (table_.write != nullptr) {
    return outcome(ask(table_.write, table_.context, lent(path), lentBytes(bytes)), path);
  }
  const std::lock_guard lock(mutex_);
  memory_.insert_or_assign(path, std::string(bytes));
  return {};
}

Result<void> TableFiles::append(const std::string& path, std::string_view bytes) {
  if (!isOurs(path)) return failed(path);
  if (table_.append != nullptr) {
    return outcome(ask(table_.append, table_.context, lent(path), lentBytes(bytes)), path);
  }
  const std::lock_guard lock(mutex_);
  const auto found = memory_.find(path);
  if (found == memory_.end()) return failed(path);
  found->second += bytes;
  return {};
}

Result<void> TableFiles::remove(const std::string& path) {
  if (!isOurs(path)) return failed(path);
  if (table_.remove != nullptr) return outcome(ask(table_.remove, table_.context, lent(path)), path);
  const std::lock_guard lock(mutex_);
  return outcome(memory_.erase(path) > 0, path);
}

}  // namespace orlan::c

void orlan_answer_bytes(orlan_answer* answer, orlan_string bytes) {
  if (answer == nullptr) return;
  orlan::c::guarded(__func__, [&] { answer->bytes = orlan::c::bytes(bytes, "bytes"); });
}
