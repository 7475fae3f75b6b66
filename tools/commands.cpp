#include "commands.hpp"

#include "completion.hpp"
#include "explain.hpp"
#include "status_words.hpp"
#include "tree_removal.hpp"

#include <filesystem/operations.hpp>

#include <fmt/format.h>

#include <type_traits>
#include <utility>

namespace client {

namespace nfs = nura::filesystem;

namespace {

using copying = std::filesystem::copy_options;
using nfs::file_status;

/// The value of a flag of `copy`.
constexpr unsigned bits(copying option)
{
    return static_cast<unsigned>(option);
}

std::vector<flag> const copy_flags{
    {"--skip-existing", bits(copying::skip_existing), "Leave files that exist alone"},
    {"--overwrite", bits(copying::overwrite_existing), "Replace files that exist"},
    {"--update", bits(copying::update_existing), "Replace files that exist and are older"},
    {"--recursive", bits(copying::recursive), "Copy directories with all that is in them"},
    {"--copy-symlinks", bits(copying::copy_symlinks), "Copy links as links"},
    {"--skip-symlinks", bits(copying::skip_symlinks), "Pass over links"},
    {"--directories-only", bits(copying::directories_only), "Copy directories, no files"},
    {"--create-symlinks", bits(copying::create_symlinks), "Make links in place of copies"},
    {"--create-hard-links", bits(copying::create_hard_links), "Make hard links of files"},
};

command_options const plain{};
command_options const walk{
    .remark = "Stem and extension follow the rules for each single part: 'a.' has the stem 'a'.\n"
              "Whatever the walk meets is part of the answer: the exit status is 0.\n"};
command_options const access_questions{
    {{"--exists", nfs::access_exists, "Whether it exists; if not, the answer is no"},
     {"--read", nfs::access_read, "Whether you may read it"},
     {"--write", nfs::access_write, "Whether you may write it"},
     {"--execute", nfs::access_execute, "Whether you may execute or search it"}}};
command_options const new_mode{
    {{"--add", file_status::perms_add, "Add these permissions to those it has"},
     {"--remove", file_status::perms_remove, "Take these permissions away"},
     {"--link", file_status::perms_symlink, "Of a link itself, which Linux refuses"}},
    {"MODE", "", "Permissions, octal like 644"}};
command_options const removal{
    {{"--yes", 1, "Do not ask"}},
    {},
    "Links in the tree are removed, never followed. What is, or holds, the root or the home\n"
    "directory is never removed, by whatever name; nor is a link that leads to it.\n"};
command_options const one_kind{
    {}, {"--type", "TYPE", "Only this: file or directory", "file directory"}};
command_options const kind_of_target{
    {}, {"--type", "TYPE", "What the target is: auto, file, directory", "auto file directory"}};
command_options const moving{
    {{"--preserve-times", 1, "Keep times of regular files across file systems"}}};
command_options const copying_options{copy_flags};
command_options const copying_files{{copy_flags.begin(), copy_flags.begin() + 3}};
command_options const base{{}, {"--base", "DIRECTORY", "Start here, not in the current directory"}};

std::u16string current_directory(request const& r)
{
    nfs::change_current_path(r.path); // nothing for the empty pathname
    return nfs::get_current_path();
}

std::u16string base_of(request const& r)
{
    return decoded({r.value, "base", 1});
}

result answer_of(command const& chosen, request const& r)
{
    auto const answer = [&](auto run) -> result {
        using kind = decltype(run(r));
        if constexpr (std::is_void_v<kind>) {
            run(r);
            return {.data = {{"done", true}}};
        } else if constexpr (std::is_same_v<kind, bool>) {
            return yes_or_no(chosen.name, run(r));
        } else if constexpr (std::is_same_v<kind, std::u16string>) {
            std::u16string const name = run(r);
            return {.alone = name, .data = {{"answer", utf8(name)}}};
        } else {
            return run(r);
        }
    };
    return std::visit(answer, chosen.run);
}

void run_once(command const& chosen, settings const& given, std::vector<raw_name> const& names,
              report& out)
{
    std::vector<std::u16string> paths;
    result found;
    try {
        for (raw_name const& name : names) {
            paths.push_back(decoded(name));
        }
        std::u16string const none;
        std::u16string const& path = paths.empty() ? none : paths.front();
        std::u16string const& other = paths.empty() ? none : paths.back();
        found = answer_of(chosen, {path, other, given.flags, given.value});
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
        {"explain", "Names", "PATH", "Show forms and parts of PATH and what is on the way", walk,
         [](request const& r) { return explain(r.path); }},
        {"unc", "Names", "PATH", "Print the network name of PATH, which is PATH itself", plain,
         [](request const& r) { return nfs::get_unc_path(r.path, false); }},

        {"exists", "Status", "PATH", "Say whether something stands at PATH, links followed", plain,
         [](request const& r) { return nfs::exists(r.path); }},
        {"status", "Status", "PATH", "Show type, permissions, size and times, links followed",
         plain, [](request const& r) { return status_result(nfs::status(r.path)); }},
        {"symlink-status", "Status", "PATH", "The same, of a link itself", plain,
         [](request const& r) { return status_result(nfs::symlink_status(r.path)); }},
        {"status-light", "Status", "PATH", "Show type, size and modification time; no tilde", plain,
         [](request const& r) { return status_result(nfs::status_express_light(r.path)); }},
        {"equivalent", "Status", "PATH OTHER", "Say whether both are the same file", plain,
         [](request const& r) { return nfs::equivalent(r.path, r.other); }},
        {"space", "Status", "PATH", "Show the room on the file system that holds PATH", plain,
         [](request const& r) { return space_result(nfs::space(nfs::path{r.path})); }},

        {"access", "Permissions", "PATH", "Say whether you may do all that the options ask",
         access_questions, [](request const& r) { return nfs::access(r.path, r.flags); }},
        {"permissions", "Permissions", "PATH", "Set the permissions of PATH", new_mode,
         [](request const& r) { nfs::permissions(r.path, r.flags | permission_bits(r.value)); }},

        {"cwd", "Current directory", "[PATH]", "Print the current directory, of PATH if given",
         plain, current_directory},

        {"create-directory", "Creation", "PATH", "Create a directory in an existing one", plain,
         [](request const& r) { nfs::create_directory(r.path); }},
        {"create-directories", "Creation", "PATH", "Create a directory and those above it", plain,
         [](request const& r) { nfs::create_directories(r.path); }},

        {"remove", "Removal", "PATH", "Remove a file, a link or an empty directory", one_kind,
         [](request const& r) {
             return r.value.empty() ? nfs::remove(r.path) : nfs::remove(r.path, type_code(r.value));
         }},
        {"remove-file", "Removal", "PATH", "Remove anything but a directory", plain,
         [](request const& r) { nfs::remove_file(r.path); }},
        {"remove-symlink", "Removal", "PATH", "The same; it need not be a link", plain,
         [](request const& r) { nfs::remove_symlink(r.path); }},
        {"remove-directory", "Removal", "PATH", "Remove an empty directory", plain,
         [](request const& r) { nfs::remove_directory(r.path); }},
        {"remove-all", "Removal", "PATH", "Remove a directory with all that is in it", removal,
         [](request const& r) { remove_tree(r.path, r.flags == 0); }},

        {"rename", "Renaming", "FROM TO", "Rename, or move to another file system", moving,
         [](request const& r) { nfs::rename(r.path, r.other, {r.flags != 0}); }},

        {"create-symlink", "Links", "TARGET LINK", "Create a symbolic link", kind_of_target,
         [](request const& r) { nfs::create_symlink(r.path, r.other, type_code(r.value)); }},
        {"copy-symlink", "Links", "LINK NEW", "Create a link with the text of another", plain,
         [](request const& r) { nfs::copy_symlink(r.path, r.other); }},
        {"read-symlink", "Links", "PATH", "Print the text of a symbolic link", plain,
         [](request const& r) { return nfs::read_symlink(r.path); }},
        {"create-shortcut", "Links", "TARGET SHORTCUT", "Fail: this system has no shortcuts", plain,
         [](request const& r) { nfs::create_shortcut(r.path, r.other); }},

        {"copy", "Copying", "FROM TO", "Copy a file, a directory or a link", copying_options,
         [](request const& r) { nfs::copy(r.path, r.other, copying(r.flags)); }},
        {"copy-file", "Copying", "FROM TO", "Copy contents and permissions of a file",
         copying_files,
         [](request const& r) { nfs::copy_file(r.path, r.other, copying(r.flags)); }},
        {"copy-directory", "Copying", "FROM TO",
         "Create a directory with the permissions of another", plain,
         [](request const& r) { nfs::copy_directory(r.path, r.other); }},

        {"absolute", "Resolution", "PATH", "Print PATH behind the base; nothing is looked at", base,
         [](request const& r) { return nfs::absolute(r.path, base_of(r)); }},
        {"canonical", "Resolution", "PATH", "Print the one name without links and dots", base,
         [](request const& r) { return nfs::canonical(r.path, base_of(r)); }},
        {"weakly-canonical", "Resolution", "PATH", "The same; the last elements need not exist",
         plain, [](request const& r) { return nfs::weakly_canonical(r.path); }},
        {"relative", "Resolution", "PATH", "Print the way to PATH from the base", base,
         [](request const& r) { return nfs::relative(r.path, base_of(r)); }},

        {"completion", "Shells", "SHELL", "Print a script that lets bash or fish complete", plain,
         [](request const& r) { print_completion(utf8(r.path)); }},
    };
    return table;
}

void run(command const& chosen, settings const& given, std::vector<std::string> const& arguments,
         report& out)
{
    std::size_t const together = chosen.takes_pairs() ? 2 : 1;
    std::vector<raw_name> taken;
    if (arguments.empty()) {
        run_once(chosen, given, taken, out);
    }
    for_each_name(arguments, given.with_nul ? '\0' : '\n', [&](raw_name name) {
        taken.push_back(std::move(name));
        if (taken.size() == together) {
            run_once(chosen, given, taken, out);
            taken.clear();
        }
    });
    if (!taken.empty()) {
        out.failure({}, refusal(fmt::format("{} {}: names go together in pairs",
                                            taken.back().source, taken.back().number)));
    }
    flush_results();
}

} // namespace client
