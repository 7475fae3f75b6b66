#include "commands.hpp"

#include "explain.hpp"
#include "status_words.hpp"

#include <filesystem/operations.hpp>

#include <fmt/format.h>

#include <exception>
#include <utility>

namespace client {

namespace nfs = nura::filesystem;

namespace {

constexpr char const* explain_remark =
    "Stem and extension follow the rules for each single part: 'a.' has the stem 'a'.\n"
    "Whatever the walk meets is part of the answer: the exit status is 0.\n";

void run_once(command const& chosen, CLI::App const& options, std::vector<raw_name> const& names,
              report& out)
{
    std::vector<std::u16string> paths;
    result found;
    try {
        for (raw_name const& name : names) {
            paths.push_back(decoded(name));
        }
        found = chosen.run({paths, options});
    } catch (std::exception const& failure) {
        out.failure(paths, failure);
        return;
    }
    out.success(paths, found);
}

} // namespace

std::vector<command> const& commands()
{
    static std::vector<command> const table{
        {"explain", "Names",
         "Show the forms and parts of each PATH and what stands on the way to it",
         [](request const& r) { return explain(r.paths[0]); }, explain_remark},
        {"exists", "Status", "Say whether something stands at each PATH, links followed",
         [](request const& r) { return yes_or_no("exists", nfs::exists(r.paths[0])); }},
        {"status", "Status", "Show type, permissions, size and times, links followed",
         [](request const& r) { return status_result(nfs::status(r.paths[0])); }},
        {"symlink-status", "Status", "The same, of a link itself",
         [](request const& r) { return status_result(nfs::symlink_status(r.paths[0])); }},
        {"status-light", "Status",
         "Show type, size and modification time of each PATH exactly as given",
         [](request const& r) { return status_result(nfs::status_express_light(r.paths[0])); }},
    };
    return table;
}

void run(command const& chosen, CLI::App const& options, std::vector<std::string> const& arguments,
         report& out)
{
    std::vector<raw_name> taken;
    char const separator = options.count("--null") != 0 ? '\0' : '\n';
    for_each_name(arguments, separator, [&](raw_name name) {
        taken.push_back(std::move(name));
        if (taken.size() == chosen.paths) {
            run_once(chosen, options, taken, out);
            taken.clear();
        }
    });
    if (!taken.empty()) {
        out.failure({}, refused_name(fmt::format("{} {}: {} names go together", taken.back().source,
                                                 taken.back().number, chosen.paths)));
    }
    flush_results();
}

} // namespace client
