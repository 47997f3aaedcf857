#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Error.hpp"
#include "orlan/base/json.hpp"

/// What every phone's store and file system accept, and the errors they answer with.
namespace orlan::phone {

/// Whether the key-value store keeps such a value: a string, boolean, integer, double or bytes.
[[nodiscard]] bool isStorable(const json::Value& value);

/// The file's name when `path` is a plain file directly inside `directory`; nothing for every other path
/// (another directory, a directory below, "." and "..", an empty name, a NUL).
[[nodiscard]] std::optional<std::string_view> nameInside(std::string_view directory, std::string_view path);

/// Domain "FileError".
namespace fileErrors {
[[nodiscard]] Error notFound(std::string_view path);                        // 1
[[nodiscard]] Error notAllowed(std::string_view path);                      // 2: no such place to write to
[[nodiscard]] Error failed(std::string_view path, std::string_view cause);  // 3: the disk says no
}  // namespace fileErrors

}  // namespace orlan::phone
