#include "tools/orlan/run/KeyInput.hpp"

#include <utility>

#include "orlan/base/ascii.hpp"

namespace orlan::run {

namespace {

constexpr char escape = '\x1b';
constexpr char rubOut = '\x7f';
constexpr std::size_t longest = 2000;  // bytes of a line that a person would type

constexpr std::pair<char, Act> letters[] = {
    {'b', Act::background}, {'f', Act::front}, {'s', Act::stand}, {'w', Act::walk},
    {'l', Act::link},       {'m', Act::media}, {'q', Act::quit},
};

std::optional<Command> commandOfKey(char key) {
  for (const auto& [letter, act] : letters) {
    if (letter == ascii::lowered(key)) return Command{act};
  }
  return std::nullopt;
}

}  // namespace

void KeyInput::take(std::string_view keys, const std::function<bool()>& isAsking,
                    const std::function<void(const Command&)>& perform) {
  if (keys.size() > 1 && keys.front() == escape) return;  // an arrow or another key without a letter
  for (const char key : keys) {
    if (const auto command = pressed(key, isAsking())) perform(*command);
  }
}

std::optional<Command> KeyInput::pressed(char key, bool asking) {
  if (key == '\n' || key == '\r') return entered(asking);
  if (key == escape) return escaped(asking);
  if (key == rubOut || key == '\b') {
    takeBack();
  } else if (asking || ascii::isDigit(key)) {
    if (typed_.size() < longest) typed_ += key;
  } else {
    typed_.clear();
    return commandOfKey(key);
  }
  return std::nullopt;
}

std::optional<Command> KeyInput::entered(bool asking) {
  const std::string line = std::exchange(typed_, {});
  if (asking) return Command{Act::answer, line};
  return line.empty() ? std::nullopt : std::optional(Command{Act::tap, line});
}

std::optional<Command> KeyInput::escaped(bool asking) {
  const bool nothing = std::exchange(typed_, {}).empty();
  return asking && nothing ? std::optional(Command{Act::close, {}}) : std::nullopt;
}

/// The last character, which may have several bytes.
void KeyInput::takeBack() {
  while (!typed_.empty()) {
    const auto last = static_cast<unsigned char>(typed_.back());
    typed_.pop_back();
    if ((last & 0xC0U) != 0x80U) return;
  }
}

}  // namespace orlan::run
