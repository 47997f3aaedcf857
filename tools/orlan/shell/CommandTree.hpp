#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace orlan::shell {

/// What may stand behind an option, or where an argument is expected.
enum class Operand { none, file, directory, other };

struct Option {
  std::vector<std::string> names;  ///< with their dashes, the short ones first; none for an argument
  std::string valueName;           ///< empty for a flag
  std::string description;
  Operand operand = Operand::none;
  std::vector<std::string> choices;  ///< where only these are taken
};

/// The program or one of its subcommands, as its help tells it.
struct Command {
  std::string name;
  std::string summary;      ///< one line, without its full stop
  std::string description;  ///< all of it
  std::string footer;
  std::vector<Option> options;
  std::vector<Option> arguments;
  std::vector<Command> commands;
};

/// Hidden options and subcommands stay hidden.
[[nodiscard]] Command commandTree(const CLI::App& app);

}  // namespace orlan::shell
