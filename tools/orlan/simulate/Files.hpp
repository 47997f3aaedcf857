#pragma once

#include <string>

#include "orlan/base/Result.hpp"

namespace orlan::simulate {

/// Where files named in a scenario are looked for.
class Files {
 public:
  explicit Files(std::string directory) : directory_(std::move(directory)) {}

  /// A relative path leads from the scenario's directory.
  [[nodiscard]] std::string resolved(const std::string& path) const;

  /// The content; the error (domain "Scenario") says in a few words why there is none.
  [[nodiscard]] Result<std::string> read(const std::string& path) const;

 private:
  std::string directory_;
};

}  // namespace orlan::simulate
