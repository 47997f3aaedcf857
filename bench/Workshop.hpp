#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace orlan::bench {

/// A temporary directory that goes with its owner.
class Workshop {
 public:
  Workshop() : directory_(std::filesystem::temp_directory_path() / "orlan-bench-XXXXXX") {
    if (mkdtemp(directory_.data()) == nullptr) std::abort();
  }
  ~Workshop() {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
  }
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;

  [[nodiscard]] const std::string& directory() const { return directory_; }
  [[nodiscard]] std::string path(std::string_view name) const { return directory_ + "/" + std::string(name); }
  void write(std::string_view name, std::string_view text) const {
    std::ofstream(path(name), std::ios::binary) << text;
  }
  [[nodiscard]] std::string read(std::string_view name) const {
    std::string text(std::filesystem::file_size(path(name)), '\0');
    std::ifstream(path(name), std::ios::binary).read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
  }
  [[nodiscard]] double size(std::string_view name) const {
    return static_cast<double>(std::filesystem::file_size(path(name)));
  }

 private:
  std::string directory_;
};

}  // namespace orlan::bench
