#include "tools/orlan/shell/CommandTree.hpp"

#include <CLI/CLI.hpp>

namespace orlan::shell {
namespace {

Operand operandOf(const std::string& valueName) {
  const auto has = [&](const char* part) { return valueName.find(part) != std::string::npos; };
  if (valueName.empty()) return Operand::none;
  if (has("DIR")) return Operand::directory;
  if (!has("=") && (has("FILE") || has(".json"))) return Operand::file;
  return Operand::other;
}

/// From the check's own description behind the name of a value, `{a,b}` or `{a->0,b->1} OR {0,1}`.
std::vector<std::string> choicesIn(const std::string& check) {
  std::vector<std::string> choices;
  const auto open = check.find('{');
  const auto close = check.find('}');
  if (open == std::string::npos || close == std::string::npos) return choices;
  for (const auto& item : CLI::detail::split(check.substr(open + 1, close - open - 1), ',')) {
    choices.push_back(item.substr(0, item.find("->")));
  }
  return choices;
}

Option describe(const CLI::Option& option) {
  Option told;
  told.description = option.get_description();
  for (const auto& name : option.get_snames()) told.names.push_back("-" + name);
  for (const auto& name : option.get_lnames()) told.names.push_back("--" + name);
  if (option.get_type_size_max() == 0) return told;
  const auto shown = option.get_type_name();
  told.valueName = shown.substr(0, shown.find(':'));
  told.operand = operandOf(told.valueName);
  told.choices = choicesIn(shown.substr(told.valueName.size()));
  return told;
}

/// The first line, which in our descriptions is a sentence or ends with what is explained below it.
std::string summaryOf(const std::string& description) {
  auto line = description.substr(0, description.find('\n'));
  while (!line.empty() && (line.back() == '.' || line.back() == ':' || line.back() == ',')) line.pop_back();
  return line;
}

}  // namespace

Command commandTree(const CLI::App& app) {
  Command command{.name = app.get_name(),
                  .summary = summaryOf(app.get_description()),
                  .description = app.get_description(),
                  .footer = app.get_footer(),
                  .options = {},
                  .arguments = {},
                  .commands = {}};
  for (const auto* option : app.get_options()) {
    if (option->get_group().empty()) continue;
    (option->nonpositional() ? command.options : command.arguments).push_back(describe(*option));
  }
  const auto shown = [](const CLI::App* sub) { return !sub->get_group().empty(); };
  for (const auto* sub : app.get_subcommands(shown)) command.commands.push_back(commandTree(*sub));
  return command;
}

}  // namespace orlan::shell
