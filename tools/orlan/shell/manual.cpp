#include "tools/orlan/shell/manual.hpp"

#include <fmt/format.h>

namespace orlan::shell {
namespace {

/// Text for man(1), which takes a backslash, a hyphen, and a full stop or an apostrophe at a line's start for
/// its own.
std::string roff(std::string_view text) {
  std::string result;
  bool lineStart = true;
  for (const char c : text) {
    if (lineStart && (c == '.' || c == '\'')) result += "\\&";
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else {
      result += c;
    }
    lineStart = c == '\n';
  }
  return result;
}

/// As it was set for a terminal, line by line.
std::string verbatim(std::string_view text) {
  return text.empty() ? std::string() : fmt::format(".PP\n.nf\n{}\n.fi\n", roff(text));
}

std::string entry(const Option& option) {
  std::string names;
  for (const auto& name : option.names) names += (names.empty() ? "\\fB" : ", \\fB") + roff(name) + "\\fR";
  if (!option.valueName.empty()) {
    names += (names.empty() ? "\\fI" : " \\fI") + roff(option.valueName) + "\\fR";
  }
  return fmt::format(".TP\n{}\n{}\n", names, roff(option.description));
}

std::string entries(const Command& command) {
  std::string page;
  for (const auto& argument : command.arguments) page += entry(argument);
  for (const auto& option : command.options) page += entry(option);
  return page;
}

std::string synopsis(const Command& program, const Command& command) {
  std::string line = fmt::format(".br\n\\fB{} {}\\fR [\\fIoptions\\fR]", program.name, command.name);
  for (const auto& argument : command.arguments) line += " \\fI" + roff(argument.valueName) + "\\fR";
  return line + "\n";
}

}  // namespace

std::string manual(const Command& program, const std::string& version) {
  std::string page =
      fmt::format(".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n.SH SYNOPSIS\n", "ORLAN",
                  program.name, version, program.name, roff(program.summary));
  for (const auto& command : program.commands) page += synopsis(program, command);
  page += ".SH OPTIONS\n" + entries(program);
  for (const auto& command : program.commands) {
    page += fmt::format(".SH \"{} {}\"\n", program.name, command.name) + verbatim(command.description) +
            entries(command) + verbatim(command.footer);
  }
  return page;
}

}  // namespace orlan::shell
