#include "tools/simulate/SchemaCheck.hpp"

#include <regex.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

#include "orlan/base/text.hpp"

namespace orlan::simulate {
namespace {

using json::Value;

bool isOfType(const std::string& type, const Value& value) {
  if (type == "null") return value.isNull();
  if (type == "boolean") return value.boolean() != nullptr;
  if (type == "string") return value.string() != nullptr;
  if (type == "array") return value.array() != nullptr;
  if (type == "object") return value.object() != nullptr;
  if (type == "number") return value.number().has_value();
  if (type == "integer") return value.number() && std::trunc(*value.number()) == *value.number();
  throw std::invalid_argument("type " + type);
}

bool isOneOfTypes(const Value& types, const Value& value) {
  if (types.string() != nullptr) return isOfType(*types.string(), value);
  return std::any_of(types.array()->begin(), types.array()->end(),
                     [&](const Value& type) { return isOfType(*type.string(), value); });
}

bool isSame(const Value& a, const Value& b) {
  return a == b || (a.number() && a.number() == b.number());
}

/// Our patterns mean the same as POSIX's extended expressions.
bool matches(const std::string& text, const std::string& pattern) {
  regex_t compiled;
  if (::regcomp(&compiled, pattern.c_str(), REG_EXTENDED | REG_NOSUB) != 0) {
    throw std::invalid_argument("pattern " + pattern);
  }
  const bool found = ::regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
  ::regfree(&compiled);
  return found;
}

bool hasAll(const json::Object& object, const Value& names) {
  return std::all_of(names.array()->begin(), names.array()->end(),
                     [&](const Value& name) { return object.contains(*name.string()); });
}

}  // namespace

const Value& SchemaCheck::resolved(const Value& schema) const {
  const Value* reference = schema.object() == nullptr ? nullptr : schema.object()->find("$ref");
  if (reference == nullptr) return schema;
  const Value* at = &root_;
  for (const auto& name : text::split(reference->string()->substr(2), '/')) at = at->object()->find(name);
  return *at;
}

bool SchemaCheck::accepts(const Value& schema, const Value& value) const {
  if (schema.boolean() != nullptr) return *schema.boolean();
  const json::Object& rules = *schema.object();
  return std::all_of(rules.begin(), rules.end(),
                     [&](const auto& rule) { return holds(rule.first, rule.second, rules, value); });
}

bool SchemaCheck::holds(const std::string& keyword, const Value& rule, const json::Object& schema,
                        const Value& value) const {
  static const std::set<std::string> notes = {"$schema",     "$defs",   "title",
                                              "description", "default", "examples"};
  if (notes.contains(keyword)) return true;
  if (keyword == "$ref") return accepts(resolved(json::Object{{"$ref", rule}}), value);
  if (keyword == "type") return isOneOfTypes(rule, value);
  if (keyword == "const") return isSame(rule, value);
  const auto fits = [&](const Value& one) { return accepts(one, value); };
  const auto same = [&](const Value& one) { return isSame(one, value); };
  if (keyword == "not") return !fits(rule);
  if (keyword == "enum") return std::any_of(rule.array()->begin(), rule.array()->end(), same);
  if (keyword == "oneOf") return std::count_if(rule.array()->begin(), rule.array()->end(), fits) == 1;

  const auto number = value.number();
  if (keyword == "minimum") return !number || *number >= *rule.number();
  if (keyword == "maximum") return !number || *number <= *rule.number();
  if (keyword == "exclusiveMinimum") return !number || *number > *rule.number();
  const std::string* string = value.string();
  if (keyword == "pattern") return string == nullptr || matches(*string, *rule.string());
  if (keyword == "minLength")
    return string == nullptr || static_cast<double>(string->size()) >= *rule.number();
  const json::Array* array = value.array();
  if (keyword == "minItems") return array == nullptr || static_cast<double>(array->size()) >= *rule.number();
  if (keyword == "maxItems") return array == nullptr || static_cast<double>(array->size()) <= *rule.number();
  const auto fitsRule = [&](const Value& element) { return accepts(rule, element); };
  if (keyword == "items") return array == nullptr || std::all_of(array->begin(), array->end(), fitsRule);

  const json::Object* object = value.object();
  const json::Value* known = schema.find("properties");
  const auto knows = [&](const std::string& name) {
    return known != nullptr && known->object()->contains(name);
  };
  const auto members = [&](const auto& test) {
    return object == nullptr || std::all_of(object->begin(), object->end(), test);
  };
  if (keyword == "properties") {
    return members([&](const auto& member) {
      return !knows(member.first) || accepts(*rule.object()->find(member.first), member.second);
    });
  }
  if (keyword == "additionalProperties") {
    return members([&](const auto& member) { return knows(member.first) || accepts(rule, member.second); });
  }
  if (keyword == "propertyNames") {
    return members([&](const auto& member) { return accepts(rule, Value(member.first)); });
  }
  if (keyword == "required") return object == nullptr || hasAll(*object, rule);
  const auto each = [&](const auto& test) {
    return object == nullptr ||
           std::all_of(rule.object()->begin(), rule.object()->end(), [&](const auto& dependent) {
             return !object->contains(dependent.first) || test(dependent.second);
           });
  };
  if (keyword == "dependentSchemas") return each(fits);
  if (keyword == "dependentRequired") return each([&](const Value& names) { return hasAll(*object, names); });
  throw std::invalid_argument("keyword " + keyword);
}

}  // namespace orlan::simulate
