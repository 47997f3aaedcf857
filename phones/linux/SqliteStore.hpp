#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "orlan/platform/KeyValueStore.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::linuxphone {

/// The key-value store in one SQLite file (mode 0600). A `set` or `remove` that has returned survives the end
/// of the process, kill -9 included. Reads come from memory. One process at a time should use a file: another
/// one's writes are seen at the next start only.
///
/// A damaged file is moved aside (`<path>.damaged`, replacing an older one) and a new one begun. Where no
/// file can be written the store works in memory alone. Either is told once.
class SqliteStore final : public KeyValueStore {
 public:
  /// Words for a person, one line. Called inside the constructor.
  using Trouble = std::function<void(const std::string& what)>;

  SqliteStore(const std::string& path, phone::PhoneObserver& observer, const Trouble& trouble = {});
  ~SqliteStore() override;

  [[nodiscard]] std::optional<json::Value> get(std::string_view key) const override;
  void set(std::string_view key, json::Value value) override;
  void remove(std::string_view key) override;
  [[nodiscard]] json::Object contents() const override;

 private:
  class File;
  mutable std::mutex mutex_;
  std::unique_ptr<File> file_;  // none: in memory only
  std::map<std::string, json::Value, std::less<>> values_;
  phone::PhoneObserver& observer_;
};

}  // namespace orlan::linuxphone
