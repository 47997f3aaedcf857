#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace orlan::linuxphone::test {

/// A directory of the test's own, gone at its end.
class TemporaryDirectory {
 public:
  TemporaryDirectory() : path_(::testing::TempDir() + "orlan-XXXXXX") {
    if (::mkdtemp(path_.data()) == nullptr) std::abort();
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string file(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace orlan::linuxphone::test
