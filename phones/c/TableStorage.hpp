#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "orlan/c/phone.h"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/FileSystem.hpp"
#include "orlan/platform/KeyValueStore.hpp"

/// Takes what one table function answers.
struct orlan_answer {
  std::optional<orlan::json::Value> value;
  std::vector<orlan::json::Object::Member> entries;
  std::string bytes;
  std::vector<orlan::CircularRegion> regions;
};

namespace orlan::c {

/// The host's store, or one in memory.
class TableStore final : public KeyValueStore {
 public:
  explicit TableStore(const orlan_store_functions& table);

  [[nodiscard]] std::optional<json::Value> get(std::string_view key) const override;
  void set(std::string_view key, json::Value value) override;
  void remove(std::string_view key) override;
  [[nodiscard]] json::Object contents() const override;

 private:
  const orlan_store_functions table_;
  mutable std::mutex mutex_;
  std::map<std::string, json::Value, std::less<>> memory_;
};

/// The host's files, or some in memory.
class TableFiles final : public FileSystem {
 public:
  explicit TableFiles(const orlan_file_functions& table);

  [[nodiscard]] std::string cachesDirectory() const override { return caches_; }
  [[nodiscard]] bool exists(const std::string& path) const override;
  [[nodiscard]] Result<std::string> read(const std::string& path) const override;
  Result<void> writeAtomically(const std::string& path, std::string_view bytes) override;
  Result<void> append(const std::string& path, std::string_view bytes) override;
  Result<void> remove(const std::string& path) override;

 private:
  /// Whether it is a plain file directly inside the caches directory; nothing else reaches the host.
  [[nodiscard]] bool isOurs(const std::string& path) const;

  const orlan_file_functions table_;
  const std::string caches_;
  mutable std::mutex mutex_;
  std::map<std::string, std::string> memory_;
};

}  // namespace orlan::c
