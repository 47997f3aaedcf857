#include "tools/orlan/run/Command.hpp"

#include <array>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::run {

namespace {

struct Row {
  std::string_view word;
  Act act;
  std::string_view argument = {};  // what it is, for a command that does not stand alone
};

constexpr auto rows = std::to_array<Row>({{"background", Act::background},
                                          {"front", Act::front},
                                          {"stand", Act::stand},
                                          {"walk", Act::walk},
                                          {"tap", Act::tap, "the number of a notification, or \"last\""},
                                          {"answer", Act::answer, "an answer"},
                                          {"link", Act::link},
                                          {"media", Act::media},
                                          {"close", Act::close},
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
  const std::string_view argument = blank == std::string_view::npos ? "" : text::trimmed(words.substr(blank));
  for (const Row& row : rows) {
    if (row.word != word) continue;
    const std::string quoted = "\"" + std::string(word) + "\"";
    if (row.argument.empty() && !argument.empty()) return Unexpected(mistake(quoted + " stands alone"));
    if (!row.argument.empty() && argument.empty()) {
      return Unexpected(mistake(quoted + " needs " + std::string(row.argument)));
    }
    return Command{row.act, std::string(argument)};
  }
  return Unexpected(unknown(word));
}

std::optional<Command> commandOfKey(char key) {
  for (const Row& row : rows) {
    if (row.argument.empty() && row.word.front() == ascii::lowered(key)) return Command{row.act, {}};
  }
  return std::nullopt;
}

}  // namespace orlan::run
