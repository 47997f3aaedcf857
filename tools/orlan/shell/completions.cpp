#include "tools/orlan/shell/completions.hpp"

#include <fmt/format.h>

#include <algorithm>

namespace orlan::shell {
namespace {

/// `text` with a backslash before each of `special`.
std::string escaped(std::string_view text, std::string_view special) {
  std::string result;
  for (const char c : text) {
    if (special.find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result;
}

/// For the inside of single quotes in bash and zsh.
std::string quoted(const std::string& text) {
  std::string result;
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result;
}

std::string joined(const std::vector<std::string>& words) {
  std::string line;
  for (const auto& word : words) line += (line.empty() ? "" : " ") + word;
  return line;
}

std::string optionNames(const Command& command, char between) {
  std::string names;
  for (const auto& option : command.options) {
    for (const auto& name : option.names) names += (names.empty() ? "" : std::string(1, between)) + name;
  }
  return names;
}

std::string commandNames(const Command& program, char between) {
  std::string names;
  for (const auto& command : program.commands) {
    names += (names.empty() ? "" : std::string(1, between)) + command.name;
  }
  return names;
}

/// The `COMMAND:OPTION` patterns of the options with this operand; nothing where there are none.
std::string bashPatterns(const Command& program, Operand operand) {
  std::string patterns;
  for (const auto& command : program.commands) {
    for (const auto& option : command.options) {
      if (option.operand != operand || !option.choices.empty()) continue;
      for (const auto& name : option.names) {
        patterns += fmt::format("{}{}:{}", patterns.empty() ? "" : " | ", command.name, name);
      }
    }
  }
  return patterns;
}

/// The lines that complete the options whose values are known.
std::string bashChoices(const Command& program) {
  std::string lines;
  for (const auto& command : program.commands) {
    for (const auto& option : command.options) {
      if (option.choices.empty()) continue;
      for (const auto& name : option.names) {
        lines +=
            fmt::format("    {}:{}) mapfile -t COMPREPLY < <(compgen -W '{}' -- \"$current\"); return ;;\n",
                        command.name, name, joined(option.choices));
      }
    }
  }
  return lines;
}

/// What a subcommand offers where no option's value is expected: where a file is, options only once one
/// begins.
std::string bashWords(const Command& command) {
  std::string words = optionNames(command, ' ');
  for (const auto& argument : command.arguments) {
    if (argument.operand == Operand::file) {
      return fmt::format("    {}) [[ $current != -* ]] || words='{}' ;;\n", command.name, words);
    }
    words += " " + joined(argument.choices);
  }
  return fmt::format("    {}) words='{}' ;;\n", command.name, words);
}

std::string zshOperand(const Option& option) {
  if (option.operand == Operand::none) return "";
  const auto choices = fmt::format("({})", joined(option.choices));
  const char* action = !option.choices.empty()                ? choices.c_str()
                       : option.operand == Operand::file      ? "_files"
                       : option.operand == Operand::directory ? "_files -/"
                                                              : " ";
  return fmt::format(":{}:{}", escaped(option.valueName, ":[]\\"), action);
}

std::string zshArguments(const Command& command, const char* indent) {
  std::string lines;
  for (const auto& option : command.options) {
    for (const auto& name : option.names) {
      lines += fmt::format(" \\\n{}'*{}[{}]{}'", indent, name, quoted(escaped(option.description, ":[]\\")),
                           quoted(zshOperand(option)));
    }
  }
  for (const auto& argument : command.arguments) {
    lines += fmt::format(" \\\n{}'*{}'", indent, quoted(zshOperand(argument)));
  }
  return lines;
}

}  // namespace

std::string bashCompletions(const Command& program) {
  std::string script = fmt::format(R"(# bash completion for {0}
_{0}() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}} word command= words=
  COMPREPLY=()
  for word in "${{COMP_WORDS[@]:1:COMP_CWORD-1}}"; do
    case $word in
      {1}) command=$word; break ;;
    esac
  done
)",
                                   program.name, commandNames(program, '|'));
  script += "  case $command:$previous in\n";
  if (const auto files = bashPatterns(program, Operand::file); !files.empty()) {
    script += fmt::format("    {}) return ;;\n", files);
  }
  if (const auto folders = bashPatterns(program, Operand::directory); !folders.empty()) {
    script += fmt::format(
        "    {}) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$current\"); return ;;\n",
        folders);
  }
  if (const auto others = bashPatterns(program, Operand::other); !others.empty()) {
    script += fmt::format("    {}) compopt +o default; return ;;\n", others);
  }
  script += bashChoices(program) + "  esac\n  case $command in\n";
  script += fmt::format("    '') words='{} {}' ;;\n", commandNames(program, ' '), optionNames(program, ' '));
  for (const auto& command : program.commands) script += bashWords(command);
  script += fmt::format(R"(  esac
  [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
  return 0
}}
complete -o default -F _{0} {0}
)",
                        program.name);
  return script;
}

std::string zshCompletions(const Command& program) {
  std::string script = fmt::format(
      "#compdef {0}\n_{0}() {{\n  local context state line\n  typeset -A opt_args\n  _arguments -C{1} \\\n"
      "    '1:command:->command' \\\n    '*::argument:->argument'\n  case $state in\n    command)\n"
      "      local -a commands\n      commands=(\n",
      program.name, zshArguments(program, "    "));
  for (const auto& command : program.commands) {
    script += fmt::format("        '{}:{}'\n", command.name, quoted(command.summary));
  }
  script += "      )\n      _describe command commands ;;\n    argument)\n      case $words[1] in\n";
  for (const auto& command : program.commands) {
    script += fmt::format("        {}) _arguments{} ;;\n", command.name, zshArguments(command, "          "));
  }
  script += fmt::format("      esac ;;\n  esac\n}}\n_{} \"$@\"\n", program.name);
  return script;
}

std::string fishCompletions(const Command& program) {
  std::string script = fmt::format("# fish completion for {0}\ncomplete -c {0} -f\n", program.name);
  const auto add = [&](const std::string& when, const Option& option) {
    script += fmt::format("complete -c {} -n '{}'", program.name, when);
    for (const auto& name : option.names) {
      script += name.substr(0, 2) == "--" ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (option.operand == Operand::file) script += option.names.empty() ? " -F" : " -r -F";
    if (option.operand == Operand::directory) script += " -x -a '(__fish_complete_directories)'";
    if (option.operand == Operand::other) script += " -x";
    if (!option.choices.empty()) script += fmt::format(" -a '{}'", joined(option.choices));
    script += fmt::format(" -d '{}'\n", escaped(option.description, "'\\"));
  };
  for (const auto& option : program.options) add("__fish_use_subcommand", option);
  for (const auto& command : program.commands) {
    script += fmt::format("complete -c {} -n __fish_use_subcommand -a {} -d '{}'\n", program.name,
                          command.name, escaped(command.summary, "'\\"));
    const auto when = "__fish_seen_subcommand_from " + command.name;
    for (const auto& option : command.options) add(when, option);
    for (const auto& argument : command.arguments) add(when, argument);
  }
  return script;
}

}  // namespace orlan::shell
