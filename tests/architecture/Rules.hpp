#pragma once

#include <optional>
#include <string>
#include <vector>

#include "architecture/SourceTree.hpp"

namespace orlan::architecture {

/// What is wrong with one include of `file`: a floor that may not be seen from there, a library that has no
/// business there, a path of another form. Nothing when it is allowed.
[[nodiscard]] std::optional<std::string> includeFault(const std::string& file, const Include& include);

/// `includeFault` for every file, each as "file:line: what", and quoted includes of files that are not there.
[[nodiscard]] std::vector<std::string> includeFaults(const Sources& sources);

/// A chain of files, each including the next, that comes back to its first; empty when there is none.
[[nodiscard]] std::vector<std::string> includeCycle(const Sources& sources);

/// Uses of a process-wide `shared()` below sdk/, where everything is handed in; declarations are none.
[[nodiscard]] std::vector<std::string> sharedFaults(const Sources& sources);

}  // namespace orlan::architecture
