#include "commands.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#ifndef NURA_FS_VERSION
#    define NURA_FS_VERSION "unversioned"
#endif

namespace {

using client::command;
using client::exit_status;

constexpr char const* footer =
    "Exit status: 0 done or yes, 1 no or not found, 2 usage or a name that is not UTF-8,\n"
    "3 any other failure, 10 + kind for a typed failure. The highest of all names wins;\n"
    "lost output always gives 3.\n";

/// The command line parser takes "[a,b]" for a list and "++" for the end of a subcommand, and
/// forgets "--" in places. Names that it must not look at travel behind this mark.
constexpr char name_mark = '=';

/// What CLI11 shall parse, last argument first as it wants it.
std::vector<std::string> marked_arguments(std::vector<std::string> const& given)
{
    std::vector<std::string> marked;
    bool names_only = false;
    for (std::string const& argument : given) {
        if (!names_only && argument == "--") {
            names_only = true;
            continue;
        }
        bool const misread =
            argument == "++" || argument.starts_with('[') || argument.starts_with(name_mark);
        marked.push_back(names_only || misread ? name_mark + argument : argument);
    }
    std::reverse(marked.begin(), marked.end());
    return marked;
}

std::string unmarked(std::string const& argument)
{
    return argument.starts_with(name_mark) ? argument.substr(1) : argument;
}

/// A subcommand on the command line.
struct declared_command {
    command const* what;
    CLI::App* options;
    CLI::Option* operands;
};

declared_command declare(CLI::App& app, command const& what)
{
    CLI::App* const options = app.add_subcommand(what.name, what.summary)->group(what.family);
    CLI::Option* const operands =
        options->add_option(what.operands, "Pathnames; - stands for names on standard input")
            ->required()
            ->type_name("")
            ->expected(CLI::detail::expected_max_vector_size);
    options->add_flag("--json")->disable_flag_override()->description(
        "Answer with a JSON object a line, failures included");
    options->add_flag("-0,--null")
        ->disable_flag_override()
        ->description("Names on standard input end with NUL, not with a line feed");
    if (what.declare_options != nullptr) {
        what.declare_options(*options);
    }
    options->footer(what.remark);
    return {&what, options, operands};
}

std::vector<std::string> names_of(declared_command const& chosen)
{
    std::vector<std::string> names;
    // Not as<...>(): that conversion has meanings for "{}" and "%%".
    for (std::string const& argument : chosen.operands->results()) {
        names.push_back(unmarked(argument));
    }
    bool const from_input = names == std::vector<std::string>{"-"};
    if (chosen.what->paths > 1 && names.size() != chosen.what->paths && !from_input) {
        throw CLI::ArgumentMismatch(chosen.what->operands, static_cast<int>(chosen.what->paths),
                                    names.size());
    }
    return names;
}

int run_chosen(declared_command const& chosen)
{
    client::report out{chosen.what->name, chosen.options->count("--json") != 0};
    client::run(*chosen.what, *chosen.options, names_of(chosen), out);
    return out.status();
}

std::string usage_message(CLI::App const* app, CLI::Error const& reason)
{
    // Named first: what CLI11 misses most often stands under an unknown name.
    std::vector<std::string> const unknown = app->remaining(true);
    std::string const what =
        unknown.empty() ? reason.what() : "unknown argument '" + unmarked(unknown.front()) + '\'';
    return fmt::format("nura-fs: {}\nRun with --help for more information.\n", what);
}

/// Ends for what CLI11 throws: a request for help or the version, or wrong usage.
int leave(CLI::App const& app, CLI::ParseError const& reason)
{
    int const code = app.exit(reason);
    client::flush_results();
    return code == 0 ? exit_status::done : exit_status::usage;
}

int run_client(std::vector<std::string> const& arguments)
{
    CLI::App app{"Name and examine files through the nura filesystem library.", "nura-fs"};
    app.set_version_flag("--version", "nura-fs " NURA_FS_VERSION);
    app.require_subcommand(1);
    app.footer(footer);
    app.failure_message(usage_message);
    std::vector<declared_command> declared;
    for (command const& what : client::commands()) {
        declared.push_back(declare(app, what));
    }
    try {
        app.parse(marked_arguments(arguments));
        auto const chosen = std::find_if(declared.begin(), declared.end(),
                                         [](auto const& each) { return each.options->parsed(); });
        return run_chosen(*chosen);
    } catch (CLI::ParseError const& reason) {
        return leave(app, reason);
    }
}

} // namespace

int main(int argc, char** argv)
{
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    try {
        return run_client({argv + 1, argv + argc});
    } catch (std::exception const& failure) {
        fmt::print(stderr, "nura-fs: {}\n", failure.what());
        return exit_status::failure;
    }
}
