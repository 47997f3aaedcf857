#include "tools/orlan/shell/ShellCommand.hpp"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>

#include "tools/orlan/shell/CommandTree.hpp"
#include "tools/orlan/shell/completions.hpp"
#include "tools/orlan/shell/manual.hpp"

namespace orlan::shell {

void addShellCommands(CLI::App& app, const std::string& version) {
  auto* completions = app.add_subcommand(
      "completions", "Print the script with which a shell completes this program's command line");
  completions->footer(
      "Examples:\n"
      "  orlan completions bash > ~/.local/share/bash-completion/completions/orlan\n"
      "  orlan completions fish > ~/.config/fish/completions/orlan.fish\n"
      "  orlan completions zsh > _orlan      in a directory of $fpath");
  auto shell = std::make_shared<std::string>();
  completions->add_option("shell", *shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}))
      ->type_name("SHELL");
  completions->callback([&app, shell] {
    const auto write = *shell == "bash"  ? bashCompletions
                       : *shell == "zsh" ? zshCompletions
                                         : fishCompletions;
    std::fputs(write(commandTree(app)).c_str(), stdout);
  });
  auto* page = app.add_subcommand("manual", "Print the manual page, for man(1)")->group("");
  page->callback([&app, version] { std::fputs(manual(commandTree(app), version).c_str(), stdout); });
}

}  // namespace orlan::shell
