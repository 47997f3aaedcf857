# fish completion for orlan, which is asked what it knows; where no option begins, a file may stand.
complete -c orlan -n __fish_use_subcommand -f -a "(orlan --help | sed -nE '/^Subcommands:/,\$s/^  ([a-z]+) +(.*)/\1\t\2/p')"
complete -c orlan -n "string match -q -- '-*' (commandline -ct)" -f -a "(orlan (commandline -opc)[2] --help | sed -nE 's/^  (-[A-Za-z],)?(--[a-z-]+).*/\2/p')"
