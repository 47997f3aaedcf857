#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orlan::run {

/// What the person holding the phone can do with keys.
enum class Act { background, front, stand, walk, tap, answer, link, media, close, quit };

struct Command {
  Act act = Act::quit;
  std::string argument = {};  // of a tap, the number; of an answer, its text

  friend bool operator==(const Command&, const Command&) = default;
};

/// Makes commands of keys: a letter acts at once, digits up to Enter tap the notification of that number.
/// While a question is open, a line up to Enter answers it. Backspace takes back, Escape drops what was typed
/// and then closes the question. Knows no terminal.
class KeyInput {
 public:
  /// `keys`: what was typed since the last call. `isAsking` is asked before each key, because a command may
  /// open or close a question.
  void take(std::string_view keys, const std::function<bool()>& isAsking,
            const std::function<void(const Command&)>& perform);

  /// What waits for Enter.
  [[nodiscard]] const std::string& typed() const { return typed_; }

 private:
  [[nodiscard]] std::optional<Command> entered(bool asking);
  [[nodiscard]] std::optional<Command> escaped(bool asking);
  [[nodiscard]] std::optional<Command> pressed(char key, bool asking);
  void takeBack();

  std::string typed_;
};

}  // namespace orlan::run
