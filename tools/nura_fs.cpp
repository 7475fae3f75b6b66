#include "commands.hpp"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <numeric>
#include <utility>

namespace {

using client::command;
using client::exit_status;

constexpr char const* footer =
    "Exit status: 0 done or yes, 1 no or not found, 2 usage, a name that is not UTF-8 or\n"
    "a refusal, 3 any other failure, 10 + kind for a typed failure. The highest of all\n"
    "names wins; lost output always gives 3.\n";

/// The command line parser takes "[a,b]" for a list and "++" for the end of a subcommand, and
/// forgets "--" in places. Names that it must not look at travel behind this mark, which no
/// argument of a program can hold.
constexpr char name_mark = '\0';

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
        bool const misread = names_only || argument == "++" || argument.starts_with('[');
        marked.push_back(misread ? name_mark + argument : argument);
    }
    std::reverse(marked.begin(), marked.end());
    return marked;
}

std::string unmarked(std::string const& argument)
{
    return argument.starts_with(name_mark) ? argument.substr(1) : argument;
}

int run_chosen(command const& what, CLI::Option const& operands, client::settings given)
{
    // Not as<...>(): that conversion has meanings for "{}" and "%%".
    std::vector<std::string> names = operands.results();
    std::transform(names.begin(), names.end(), names.begin(), unmarked);
    if (what.takes_pairs() && names.size() != 2 && names != std::vector<std::string>{"-"}) {
        throw CLI::ArgumentMismatch(what.operands, 2, names.size());
    }
    given.value = unmarked(given.value);
    client::report out{what.name, given.as_json, given.with_nul};
    client::run(what, given, names, out);
    return out.status();
}

void declare_extra(CLI::App& options, client::parameter const& extra, std::string& value)
{
    CLI::Option* const option = options.add_option(extra.name, value, extra.meaning);
    option->type_name(extra.value)->required(*extra.name != '-');
    if (*extra.choices != '\0') {
        option->check(CLI::IsMember(CLI::detail::split(extra.choices, ' ')).description(""));
    }
}

/// Makes `what` a subcommand of `app`, which writes down in `given` what its options say.
void declare(CLI::App& app, command const& what, client::settings& given, int& status)
{
    CLI::App* const options = app.add_subcommand(what.name, what.summary)->group(what.family);
    options->footer(what.options.remark);
    if (*what.options.extra.name != '\0') {
        declare_extra(*options, what.options.extra, given.value);
    }
    CLI::Option const* const operands =
        options->add_option(what.operands, "Pathnames; - stands for those on standard input")
            ->required(what.needs_names())
            ->type_name("")
            ->expected(CLI::detail::expected_max_vector_size);
    for (client::flag const& each : what.options.flags) {
        options
            ->add_flag_callback(
                each.name, [&] { given.flags |= each.value; }, each.meaning)
            ->disable_flag_override();
    }
    options->add_flag("--json", given.as_json, "Answer with a JSON object a line, failures too")
        ->disable_flag_override();
    options->add_flag("-0,--null", given.with_nul, "Names read, or printed alone, end with NUL")
        ->disable_flag_override();
    options->callback([&, operands] { status = run_chosen(what, *operands, given); });
}

/// How many characters to insert, delete or replace between two words.
std::size_t edit_distance(std::string_view one, std::string_view other)
{
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), 0U);
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            std::size_t const replaced = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// What other clients call our subcommands.
constexpr auto other_words = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"chmod", "permissions"},
    {"cp", "copy"},
    {"df", "space"},
    {"ln", "create-symlink"},
    {"mkdir", "create-directory"},
    {"move", "rename"},
    {"mv", "rename"},
    {"pwd", "cwd"},
    {"readlink", "read-symlink"},
    {"realpath", "canonical"},
    {"rm", "remove-file"},
    {"rmdir", "remove-directory"},
    {"stat", "status"},
});

/// Whether a subcommand has an option `word`.
bool is_option(std::string_view word)
{
    auto const is_word = [word](client::flag const& each) { return word == each.name; };
    return word == "--json" || word == "-0" || word == "--null" ||
           std::ranges::any_of(client::commands(), [&](command const& each) {
               return word == each.options.extra.name ||
                      std::ranges::any_of(each.options.flags, is_word);
           });
}

/// A hint for who mistyped a subcommand or what may stand in its place; empty if none is near.
std::string suggestion_for(std::string_view word)
{
    if (is_option(word)) {
        return ": options go behind the subcommand";
    }
    for (auto const& [other, ours] : other_words) {
        if (word == other) {
            return fmt::format(": did you mean '{}'?", ours);
        }
    }
    std::vector<std::string_view> known{"--help", "--version"};
    for (command const& each : client::commands()) {
        known.emplace_back(each.name);
    }
    auto const distance = [word](std::string_view each) { return edit_distance(word, each); };
    std::string_view const nearest = std::ranges::min(known, {}, distance);
    return distance(nearest) <= (word.size() + 2) / 3 ? fmt::format(": did you mean '{}'?", nearest)
                                                      : "";
}

/// Two operands in one stand for a pair: the dots that CLI11 puts behind any number are wrong
/// there.
class help_formatter : public CLI::Formatter {
public:
    std::string make_option_usage(CLI::Option const* option) const override
    {
        return for_pair(option) ? option->get_name(true)
                                : CLI::Formatter::make_option_usage(option);
    }

    std::string make_option_opts(CLI::Option const* option) const override
    {
        return for_pair(option) ? "" : CLI::Formatter::make_option_opts(option);
    }

private:
    static bool for_pair(CLI::Option const* option)
    {
        return option->get_positional() && option->get_name(true).find(' ') != std::string::npos;
    }
};

std::string usage_message(CLI::App const* app, CLI::Error const& reason)
{
    // Named first: what CLI11 misses most often stands under an unknown name.
    std::vector<std::string> const unknown = app->remaining(true);
    std::string what = reason.what();
    if (!unknown.empty()) {
        std::string const word = unmarked(unknown.front());
        what = fmt::format("unknown argument '{}'{}", word,
                           app->remaining(false).empty() ? "" : suggestion_for(word));
    }
    return fmt::format("nura-fs: {}\nRun with --help for more information.\n", what);
}

int run_client(std::vector<std::string> const& arguments)
{
    CLI::App app{"Name, examine and change files through the nura filesystem library.", "nura-fs"};
    auto const formatter = std::make_shared<help_formatter>();
    formatter->column_width(22);
    formatter->label("REQUIRED", "");
    app.formatter(formatter);
    app.set_version_flag("--version", "nura-fs " NURA_FS_VERSION);
    app.require_subcommand(1)->footer(footer)->failure_message(usage_message);
    client::settings given;
    int status = exit_status::done;
    for (command const& what : client::commands()) {
        declare(app, what, given, status);
    }
    try {
        app.parse(marked_arguments(arguments));
    } catch (CLI::ParseError const& reason) {
        status = app.exit(reason) == 0 ? exit_status::done : exit_status::usage;
        client::flush_results();
    }
    return status;
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
