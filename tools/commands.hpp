#pragma once

#include "names.hpp"
#include "report.hpp"

#include <cstring>
#include <string>
#include <variant>
#include <vector>

namespace client {

/// What the options of a command line say; the same for all its names.
struct settings {
    unsigned flags = 0; ///< the values of the flags that were given, combined with |
    std::string value;  ///< what the parameter was given; empty without
    bool as_json = false;
    bool with_nul = false; ///< ends names on standard input and names as answers
};

/// One run of a command.
struct request {
    std::u16string const& path;  ///< empty if none was given
    std::u16string const& other; ///< the second of a pair
    unsigned flags;
    std::string const& value;
};

/// An option without a value.
struct flag {
    char const* name;
    unsigned value;
    char const* meaning;
};

/// An option with a value, or a word that stands before the pathnames.
struct parameter {
    char const* name = "";
    char const* value = "";
    char const* meaning = "";
    char const* choices = ""; ///< separated by spaces; empty if it takes any text
};

/// What a command answers: lines, yes or no, a bare text, or nothing.
using action = std::variant<result (*)(request const&), bool (*)(request const&),
                            std::u16string (*)(request const&), void (*)(request const&)>;

/// What a command takes besides pathnames.
struct command_options {
    std::vector<flag> flags{};
    parameter extra{};
    char const* remark = ""; ///< the end of its own `--help`
};

/// A subcommand. With one operand it runs once for every name; with two, once for the pair, or
/// for every pair of names on standard input; with one in brackets, once without a name or once
/// for every name.
struct command {
    char const* name;
    char const* family; ///< the heading that it has in `--help`
    char const* operands;
    char const* summary;
    command_options options;
    action run;

    [[nodiscard]] bool takes_pairs() const { return std::strchr(operands, ' ') != nullptr; }
    [[nodiscard]] bool needs_names() const { return *operands != '['; }
};

/// All subcommands, family by family.
[[nodiscard]] std::vector<command> const& commands();

/// Runs `chosen` for the names that `arguments` stand for; a failure does not stop those that
/// follow.
/// \throws std::system_error if standard input or standard output fails
void run(command const& chosen, settings const& given, std::vector<std::string> const& arguments,
         report& out);

} // namespace client
