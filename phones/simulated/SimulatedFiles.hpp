#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "orlan/platform/FileSystem.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::sim {

/// What the disk refuses.
enum class StorageFault { none, reads, writes };

/// A caches directory in memory, without directories below it. Any thread.
class SimulatedFiles final : public FileSystem {
 public:
  /// `initial`: contents by file name. `keepsAppended`: false when what is appended to a file is taken but
  /// forgotten, so that it reads as it was last written as a whole.
  SimulatedFiles(phone::PhoneObserver& observer, const std::map<std::string, std::string>& initial,
                 bool keepsAppended = true);

  [[nodiscard]] std::string cachesDirectory() const override;
  [[nodiscard]] bool exists(const std::string& path) const override;
  [[nodiscard]] Result<std::string> read(const std::string& path) const override;
  Result<void> writeAtomically(const std::string& path, std::string_view bytes) override;
  Result<void> append(const std::string& path, std::string_view bytes) override;
  Result<void> remove(const std::string& path) override;

  /// From now on reading, or writing, appending and removing, fails.
  void fail(StorageFault fault);

  /// Somebody else than the application changes a file: nobody is told. Nothing removes it.
  void change(std::string_view name, std::optional<std::string> bytes);

  /// What is in a file, whatever the disk refuses.
  [[nodiscard]] std::optional<std::string> content(std::string_view name) const;

 private:
  using Files = std::map<std::string, std::string, std::less<>>;
  [[nodiscard]] Result<Files::iterator> fileToChange(const std::string& path);  // under the mutex

  phone::PhoneObserver& observer_;
  const bool keepsAppended_;
  mutable std::mutex mutex_;
  Files files_;
  StorageFault fault_ = StorageFault::none;
};

}  // namespace orlan::sim
