#include "report.hpp"

#include "names.hpp"

#include <filesystem/describe.hpp>
#include <filesystem/exceptions.hpp>

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace client {

namespace nfs = nura::filesystem;
using nlohmann::ordered_json;

namespace {

bool wants_colour(int descriptor)
{
    char const* const terminal = std::getenv("TERM");
    return std::getenv("NO_COLOR") == nullptr && terminal != nullptr &&
           std::string_view{terminal} != "dumb" && ::isatty(descriptor) == 1;
}

std::string painted(std::string const& text, tone how, bool coloured)
{
    constexpr std::array codes{0, 32, 31, 2, 1};
    return coloured && how != tone::plain && !text.empty()
               ? fmt::format("\033[{}m{}\033[0m", codes.at(static_cast<std::size_t>(how)), text)
               : text;
}

std::string shown_together(report::pathnames const& names, bool always_quoted)
{
    std::string text;
    for (std::u16string const& name : names) {
        char const* const quote = always_quoted || name.empty() ? "'" : "";
        text += fmt::format("{}{}{}{}", text.empty() ? "" : " -> ", quote, shown(name), quote);
    }
    return text;
}

std::string as_block(std::string const& heading, std::vector<line> const& lines, bool coloured)
{
    std::size_t width = 0;
    for (line const& each : lines) {
        width = std::max(width, each.label.size());
    }
    std::string block = painted(heading, tone::strong, coloured) + '\n';
    for (line const& each : lines) {
        std::string const padding(width - each.label.size() + 2, ' ');
        block += "  " + painted(each.label, tone::faint, coloured) + padding;
        block += painted(each.text, each.how, coloured) + '\n';
    }
    return block;
}

std::string as_text(std::string const& heading, result const& found, bool coloured)
{
    if (found.lines.empty()) {
        return {};
    }
    line const& first = found.lines.front();
    if (!first.label.empty()) {
        return as_block(heading, found.lines, coloured);
    }
    std::string const word = fmt::format("{:<3}", first.text);
    return painted(word, first.how, coloured) + "  " + heading + '\n';
}

void write_object(report::pathnames const& names, ordered_json const& data)
{
    ordered_json object;
    object["path"] = names.empty() ? ordered_json{} : ordered_json(utf8(names.front()));
    if (names.size() > 1) {
        object["other_path"] = utf8(names[1]);
    }
    object.update(data);
    fmt::print("{}\n", object.dump(-1, ' ', false, ordered_json::error_handler_t::replace));
}

int status_for(std::exception const& failure)
{
    if (auto const* const typed = dynamic_cast<nfs::FsysExceptionBase const*>(&failure)) {
        return exit_status::typed_failure + static_cast<int>(typed->kind());
    }
    bool const refused = dynamic_cast<refusal const*>(&failure) != nullptr;
    return refused ? exit_status::usage : exit_status::failure;
}

} // namespace

void result::add(std::string_view key, std::string const& text, tone how)
{
    add_value(key, text, text, how);
}

void result::add_value(std::string_view key, ordered_json value, std::string text, tone how)
{
    std::string label{key};
    data[label] = std::move(value);
    std::replace(label.begin(), label.end(), '_', ' ');
    lines.push_back({std::move(label), std::move(text), how});
}

void result::add_name(std::string_view key, std::u16string_view name)
{
    add_value(key, utf8(name), name.empty() ? "(empty)" : shown(name),
              name.empty() ? tone::faint : tone::plain);
}

result yes_or_no(std::string_view key, bool yes)
{
    result answer;
    answer.yes = yes;
    answer.data[std::string{key}] = yes;
    answer.lines.push_back({"", yes ? "yes" : "no", yes ? tone::good : tone::bad});
    return answer;
}

std::string failure_words(std::exception const& failure, report::pathnames const& names)
{
    auto const* const typed = dynamic_cast<nfs::FsysExceptionBase const*>(&failure);
    bool const has_name = typed != nullptr && !typed->pathname().empty();
    std::string const given = has_name || names.empty() ? "" : shown_together(names, true) + ": ";
    return given + nfs::describe(failure);
}

ordered_json failure_data(std::exception const& failure, report::pathnames const& names)
{
    std::string const description = failure_words(failure, names);
    auto const* const typed = dynamic_cast<nfs::FsysExceptionBase const*>(&failure);
    if (typed == nullptr) {
        bool const refused = dynamic_cast<refusal const*>(&failure) != nullptr;
        return {{"type", refused ? "Refusal" : "other"}, {"description", description}};
    }
    ordered_json others = ordered_json::array();
    for (std::u16string const& other : typed->other_pathnames()) {
        others.push_back(utf8(other));
    }
    std::string const& identifier = typed->message_id();
    return {{"type", identifier.substr(identifier.rfind(':') + 1)},
            {"kind", typed->kind()},
            {"message_id", identifier},
            {"pathname", utf8(typed->pathname())},
            {"other_pathnames", std::move(others)},
            {"error_number", typed->error_number()},
            {"description", description}};
}

void flush_results()
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        throw std::system_error(errno, std::generic_category(), "standard output");
    }
}

report::report(std::string_view command, bool as_json, bool with_nul)
    : command_{command}, as_json_{as_json}, with_nul_{with_nul},
      coloured_results_{wants_colour(STDOUT_FILENO)}, coloured_failures_{
                                                          wants_colour(STDERR_FILENO)}
{
}

void report::success(pathnames const& names, result const& found)
{
    status_ = std::max(status_, found.yes ? exit_status::done : exit_status::no);
    if (as_json_) {
        write_object(names, found.data);
    } else if (found.alone) {
        std::string const text = with_nul_ ? utf8(*found.alone) + '\0' : shown(*found.alone) + '\n';
        fmt::print("{}", text);
    } else {
        fmt::print("{}", as_text(shown_together(names, false), found, coloured_results_));
    }
}

void report::failure(pathnames const& names, std::exception const& failure)
{
    status_ = std::max(status_, status_for(failure));
    if (as_json_) {
        write_object(names, {{"error", failure_data(failure, names)}});
        return;
    }
    flush_results();
    fmt::print(stderr, "{}: {}\n", painted("nura-fs " + command_, tone::bad, coloured_failures_),
               failure_words(failure, names));
}

} // namespace client
