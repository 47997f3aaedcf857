#include "phones/common/storageRules.hpp"

namespace orlan::phone {

bool isStorable(const json::Value& value) {
  return !value.isNull() && !value.array() && !value.object();
}

std::optional<std::string_view> nameInside(std::string_view directory, std::string_view path) {
  if (path.size() <= directory.size() + 1 || !path.starts_with(directory) || path[directory.size()] != '/') {
    return std::nullopt;
  }
  const std::string_view name = path.substr(directory.size() + 1);
  const bool plain = name != "." && name != ".." && name.find('/') == std::string_view::npos &&
                     name.find('\0') == std::string_view::npos;
  return plain ? std::optional(name) : std::nullopt;
}

namespace fileErrors {
namespace {

Error make(std::int64_t code, std::string_view what, std::string_view path, std::string_view cause) {
  std::string text(what);
  text.append(": ").append(path);
  if (!cause.empty()) text.append(": ").append(cause);
  return {"FileError", code, std::move(text)};
}

}  // namespace

Error notFound(std::string_view path) {
  return make(1, "There is no such file", path, {});
}
Error notAllowed(std::string_view path) {
  return make(2, "Not a file of this application", path, {});
}
Error failed(std::string_view path, std::string_view cause) {
  return make(3, "The file cannot be used", path, cause);
}

}  // namespace fileErrors
}  // namespace orlan::phone
