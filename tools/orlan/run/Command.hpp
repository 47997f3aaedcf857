#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"

namespace orlan::run {

/// What the person holding the phone can do.
enum class Act { background, front, stand, walk, tap, answer, link, media, close, quit };

/// One thing that the person does: keys at the terminal, or a line of a script.
struct Command {
  Act act = Act::quit;
  std::string argument;

  friend bool operator==(const Command&, const Command&) = default;
};

/// From words such as "background" or "tap 3". The error says what is wrong with them, on one line.
[[nodiscard]] Result<Command> readCommand(std::string_view words);

/// From a key: the first letter of its word, in either case; nothing when no command that stands alone has
/// it.
[[nodiscard]] std::optional<Command> commandOfKey(char key);

}  // namespace orlan::run
