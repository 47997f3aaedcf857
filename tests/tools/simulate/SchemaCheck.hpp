#pragma once

#include "orlan/base/json.hpp"

namespace orlan::simulate {

/// As much of JSON Schema as the schema of scenarios uses; a keyword beyond that ends the test with an
/// exception.
class SchemaCheck {
 public:
  /// `root`: what "#/…" leads into; outlives the check.
  explicit SchemaCheck(const json::Value& root) : root_(root) {}

  [[nodiscard]] bool accepts(const json::Value& value) const { return accepts(root_, value); }
  [[nodiscard]] bool accepts(const json::Value& schema, const json::Value& value) const;

  /// What a reference such as "#/$defs/fix" stands for; other schemas stand for themselves.
  [[nodiscard]] const json::Value& resolved(const json::Value& schema) const;

 private:
  [[nodiscard]] bool holds(const std::string& keyword, const json::Value& rule, const json::Object& schema,
                           const json::Value& value) const;

  const json::Value& root_;
};

}  // namespace orlan::simulate
