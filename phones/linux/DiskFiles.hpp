#pragma once

#include <string>

#include "orlan/platform/FileSystem.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::linuxphone {

/// Plain files directly inside one directory of the disk; files have mode 0600, the directory 0700.
class DiskFiles final : public FileSystem {
 public:
  /// Makes the directory and clears away what a killed writer left in it. `cachesDirectory` is absolute,
  /// without a trailing slash.
  DiskFiles(std::string cachesDirectory, phone::PhoneObserver& observer);

  [[nodiscard]] std::string cachesDirectory() const override { return directory_; }
  [[nodiscard]] bool exists(const std::string& path) const override;
  [[nodiscard]] Result<std::string> read(const std::string& path) const override;
  Result<void> writeAtomically(const std::string& path, std::string_view bytes) override;
  Result<void> append(const std::string& path, std::string_view bytes) override;
  Result<void> remove(const std::string& path) override;

 private:
  std::string directory_;
  phone::PhoneObserver& observer_;
};

}  // namespace orlan::linuxphone
