#include "bench/jsonPeers.hpp"

#include <rapidjson/document.h>

#include <cstdlib>
#include <nlohmann/json.hpp>

namespace orlan::bench {

void rapidjsonTree(std::string_view text, const std::function<void()>& whileThere) {
  rapidjson::Document document;
  document.Parse(text.data(), text.size());
  if (document.HasParseError()) std::abort();
  whileThere();
}

void nlohmannTree(std::string_view text, const std::function<void()>& whileThere) {
  const auto tree = nlohmann::json::parse(text);
  if (!tree.is_object()) std::abort();
  whileThere();
}

}  // namespace orlan::bench
