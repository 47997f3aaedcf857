#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orlan::bench {

/// Parses a text into a library's bare tree, calls `whileThere` while the tree is there, and lets it go.
void rapidjsonTree(std::string_view text, const std::function<void()>& whileThere);
void nlohmannTree(std::string_view text, const std::function<void()>& whileThere);

}  // namespace orlan::bench
