#pragma once

#include "names.hpp"
#include "report.hpp"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace client {

/// One run of a command: as many pathnames as it takes, and the options it was given.
struct request {
    std::vector<std::u16string> const& paths;
    CLI::App const& options;
};

/// A subcommand. With one pathname it runs once for every name; with two, once for the pair, or
/// for every pair of names on standard input.
struct command {
    char const* name;
    char const* family; ///< the heading that it has in `--help`
    char const* summary;
    result (*run)(request const&);
    char const* remark = ""; ///< the end of its own `--help`
    std::size_t paths = 1;
    char const* operands = "PATH";
    void (*declare_options)(CLI::App&) = nullptr;
};

/// All subcommands, family by family.
[[nodiscard]] std::vector<command> const& commands();

/// Runs `chosen` for the names that `arguments` stand for; a failure does not stop those that
/// follow.
/// \throws std::system_error if standard input or standard output fails
void run(command const& chosen, CLI::App const& options, std::vector<std::string> const& arguments,
         report& out);

} // namespace client
