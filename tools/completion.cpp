#include "completion.hpp"

#include "commands.hpp"

#include <fmt/format.h>

namespace client {

namespace {

constexpr char const* bash_form = R"(_nura_fs()
{{
    local words='--help --json --null' choices=
    case ${{COMP_WORDS[1]}} in
{}    esac
    if ((COMP_CWORD == 1)); then
        words='--help --version {}'
    elif [[ $3 == --type ]]; then
        words=$choices
    elif [[ ${{COMP_WORDS[1]}} == completion ]]; then
        words='bash fish'
    elif [[ $2 != -* ]]; then
        return
    fi
    COMPREPLY=($(compgen -W "$words" -- "$2"))
}}
complete -o bashdefault -o default -F _nura_fs nura-fs
)";

constexpr char const* fish_start = R"(complete -c nura-fs -s h -l help
complete -c nura-fs -n __fish_use_subcommand -f -l version
complete -c nura-fs -n 'not __fish_use_subcommand' -l json
complete -c nura-fs -n 'not __fish_use_subcommand' -s 0 -l null
complete -c nura-fs -n '__fish_seen_subcommand_from completion' -f -a 'bash fish'
)";

std::string bash_script()
{
    std::string names;
    std::string cases;
    for (command const& each : commands()) {
        names += fmt::format("{} ", each.name);
        cases +=
            fmt::format("    {}) choices='{}' words+='", each.name, each.options.extra.choices);
        for (flag const& one : each.options.flags) {
            cases += fmt::format(" {}", one.name);
        }
        cases += fmt::format(" {}' ;;\n",
                             *each.options.extra.name == '-' ? each.options.extra.name : "");
    }
    return fmt::format(bash_form, cases, names);
}

std::string fish_script()
{
    std::string script = fish_start;
    for (command const& each : commands()) {
        script += fmt::format("complete -c nura-fs -n __fish_use_subcommand -f -a {} -d '{}'\n",
                              each.name, each.summary);
        std::string const option =
            fmt::format("complete -c nura-fs -n '__fish_seen_subcommand_from {}' -", each.name);
        for (flag const& one : each.options.flags) {
            script += fmt::format("{}l {} -d '{}'\n", option, one.name + 2, one.meaning);
        }
        parameter const& extra = each.options.extra;
        if (*extra.name == '-') {
            bool const takes_files = *extra.choices == '\0';
            script += fmt::format("{}{}rl {} -a '{}' -d '{}'\n", option, takes_files ? "" : "f",
                                  extra.name + 2, extra.choices, extra.meaning);
        }
    }
    return script;
}

} // namespace

void print_completion(std::string const& shell)
{
    if (shell != "bash" && shell != "fish") {
        throw refusal("completion is for bash or fish");
    }
    fmt::print("{}", shell == "bash" ? bash_script() : fish_script());
}

} // namespace client
