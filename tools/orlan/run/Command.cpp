#include "tools/orlan/run/Command.hpp"

#include <array>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::run {

namespace {

struct Row {
  std::string_view word;
  Act act;
};

constexpr auto rows = std::to_array<Row>({{"background", Act::background},
                                          {"front", Act::front},
                                          {"stand", Act::stand},
                                          {"walk", Act::walk},
                                          {"quit", Act::quit}});

Error mistake(const std::string& what) {
  return {"orlan run", 2, what};
}

Error unknown(std::string_view word) {
  std::string known;
  for (const Row& row : rows) known += (known.empty() ? "" : ", ") + std::string(row.word);
  return mistake("unknown command \"" + text::escapedControls(word) + "\"; there are " + known);
}

}  // namespace

Result<Command> readCommand(std::string_view words) {
  const std::size_t blank = words.find(' ');
  const std::string_view word = words.substr(0, blank);
  const auto argument = blank == std::string_view::npos ? "" : text::trimmed(words.substr(blank));
  for (const Row& row : rows) {
    if (row.word != word) continue;
    if (!argument.empty()) return Unexpected(mistake("\"" + std::string(word) + "\" stands alone"));
    return Command{row.act, {}};
  }
  return Unexpected(unknown(word));
}

std::optional<Command> commandOfKey(char key) {
  for (const Row& row : rows) {
    if (row.word.front() == ascii::lowered(key)) return Command{row.act, {}};
  }
  return std::nullopt;
}

}  // namespace orlan::run
