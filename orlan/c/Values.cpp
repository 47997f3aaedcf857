#include "orlan/c/Values.hpp"

#include <cstdlib>
#include <new>

#include "orlan/base/text.hpp"

namespace orlan::c {
namespace {

Misuse wrong(orlan_status status, const char* name, std::string_view what) {
  return {status, std::string(name) + ": " + std::string(what)};
}

}  // namespace

std::string_view bytes(orlan_string string, const char* name) {
  if (string.data == nullptr && string.length > 0) {
    throw wrong(ORLAN_INVALID_ARGUMENT, name, "data is NULL, length is not 0");
  }
  return string.data == nullptr ? std::string_view() : std::string_view(string.data, string.length);
}

std::string_view text(orlan_string string, const char* name) {
  const std::string_view found = bytes(string, name);
  if (!text::isUtf8(found)) throw wrong(ORLAN_NOT_UTF8, name, "not UTF-8");
  return found;
}

std::optional<std::string> optionalText(orlan_string string, const char* name) {
  const std::string_view found = text(string, name);
  return string.data == nullptr ? std::nullopt : std::optional<std::string>(found);
}

std::vector<std::string> texts(const orlan_string* strings, std::size_t count, const char* name) {
  std::vector<std::string> found;
  if (count == 0) return found;
  needed(strings, name);
  found.reserve(count);
  for (std::size_t i = 0; i < count; ++i) found.emplace_back(text(strings[i], name));
  return found;
}

json::Value jsonValue(orlan_string string, const char* name) {
  auto value = json::parse(bytes(string, name));
  if (!value) throw wrong(ORLAN_NOT_JSON, name, value.error().description);
  return std::move(*value);
}

json::Object jsonObject(orlan_string string, const char* name) {
  if (string.data == nullptr) {
    static_cast<void>(bytes(string, name));
    return {};
  }
  auto value = jsonValue(string, name);
  if (value.object() == nullptr) throw wrong(ORLAN_NOT_JSON, name, "not a JSON object");
  return std::move(*value.object());
}

Error error(const orlan_error& error) {
  return {std::string(text(error.domain, "error.domain")), error.code,
          std::string(text(error.description, "error.description"))};
}

orlan_string given(std::string_view text) {
  auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::copy(text.begin(), text.end(), copy);
  copy[text.size()] = '\0';
  return {copy, text.size()};
}

}  // namespace orlan::c

void orlan_string_free(orlan_string string) {
  std::free(const_cast<char*>(string.data));  // NOLINT: `given` allocated it
}
