#include "explain.hpp"

#include "names.hpp"
#include "status_words.hpp"

#include <filesystem/filesystem.hpp>

#include <fmt/format.h>

#include <utility>

namespace client {

namespace nfs = nura::filesystem;
using nlohmann::ordered_json;

namespace {

/// What stands at one step of the way.
struct sighting {
    std::string kind;
    std::string text; ///< what the line says after the kind
    ordered_json data;
    tone how = tone::plain;
};

sighting failed_look(std::exception const& failure, nfs::path const& at)
{
    return {"failure",
            failure_words(failure, {at.pathname()}),
            {{"error", failure_data(failure, {at.pathname()})}},
            tone::bad};
}

/// What the link `at` leads to in the end.
sighting link_end(nfs::path const& at)
{
    try {
        nfs::file_status const status = nfs::status(at);
        std::string const words = type_words(status.type());
        return {words, words, {{"leads_to", words}}, status.exists() ? tone::plain : tone::bad};
    } catch (std::exception const& failure) {
        return failed_look(failure, at);
    }
}

sighting look_at_link(nfs::path const& at, std::string const& element)
{
    std::u16string const target = nfs::read_symlink(at.pathname());
    sighting const end = link_end(at);
    ordered_json data{{"found", "symbolic link"}, {"target", utf8(target)}};
    data.update(end.data);
    return {"symbolic link", fmt::format("{} -> {} ({})", element, shown(target), end.text),
            std::move(data), end.how};
}

/// Looks at the path that the walk has come to with `element`.
sighting look_at(nfs::path const& at, std::string const& element)
{
    try {
        nfs::file_status const status = nfs::symlink_status(at);
        if (status.is_symlink()) {
            return look_at_link(at, element);
        }
        std::string const words = type_words(status.type());
        return {words, element, {{"found", words}}, status.exists() ? tone::plain : tone::faint};
    } catch (std::exception const& failure) {
        return failed_look(failure, at);
    }
}

void add_lengths(result& found, std::u16string const& native)
{
    std::size_t const units = native.size();
    std::size_t const bytes = nfs::detail::to_filesystem(native).size();
    found.data["units"] = units;
    found.data["bytes"] = bytes;
    found.lines.push_back(
        {"length", counted(units, "UTF-16 unit") + ", " + counted(bytes, "byte")});
}

void add_walk(result& found, nfs::path const& native)
{
    ordered_json steps = ordered_json::array();
    std::u16string const& text = native.pathname();
    for (std::u16string_view const element : native) {
        auto const end = static_cast<std::size_t>(element.data() + element.size() - text.data());
        sighting const seen = look_at(nfs::path{text.substr(0, end), false}, shown(element));
        found.lines.push_back({steps.empty() ? "elements" : "",
                               fmt::format("{:<16}  {}", seen.kind, seen.text), seen.how});
        ordered_json step{{"element", utf8(element)}};
        step.update(seen.data);
        steps.push_back(std::move(step));
    }
    found.data["elements"] = std::move(steps);
}

} // namespace

result explain(std::u16string const& given)
{
    nfs::path const native{given};
    result found;
    found.add_name("expanded", nfs::detail::make_expanded_path(given, false));
    found.add_name("native", native.pathname());
    add_lengths(found, native.pathname());
    found.add_name("parent", native.parent_path().pathname());
    found.add_name("filename", native.filename());
    found.add_name("stem", native.stem());
    found.add_name("extension", native.extension());
    found.add("hash", fmt::format("{:016x}", native.hash()));
    add_walk(found, native);
    return found;
}

} // namespace client
