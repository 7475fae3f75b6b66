#include "errors/raise.hpp"
#include "native/standard_path.hpp"
#include "operations/failure_attribution.hpp"
#include "operations/tree_copy.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <algorithm>
#include <cstdint>
#include <optional>

namespace nura::filesystem {

namespace {

using std::filesystem::copy_options;

bool has_all(copy_options options, copy_options wanted)
{
    return (options & wanted) == wanted;
}

/// Refuses options that contradict one another, links first.
void validate_copy_options(copy_options options)
{
    if (has_all(options, copy_options::copy_symlinks | copy_options::skip_symlinks)) {
        detail::raise_invalid_argument("Invalid combination selected: copy_symlinks & "
                                       "skip_symlinks cannot be used together");
    }
    constexpr auto skip = copy_options::skip_existing;
    constexpr auto overwrite = copy_options::overwrite_existing;
    constexpr auto update = copy_options::update_existing;
    if (has_all(options, overwrite | update) || has_all(options, skip | overwrite) ||
        has_all(options, skip | update)) {
        // The option is called overwrite_existing; the text is fixed.
        detail::raise_invalid_argument("Invalid combination selected: overwrite_if_exists, "
                                       "skip_existing & update_existing cannot be used together");
    }
}

/// What `copying` makes of the standard names of `from` and `to`.
template <class Copying>
void copy_by(path const& from, path const& to, copy_options options, Copying copying)
{
    validate_copy_options(options);
    std::filesystem::path const source = detail::to_standard_path(from.pathname());
    std::filesystem::path const target = detail::to_standard_path(to.pathname());
    std::error_code error = detail::refusal_of(source, target);
    if (!error) {
        error = copying(source, target, options);
    }
    detail::raise_for_error_code(error, &from, &to);
}

/// The size of the file `p`, or nothing where it cannot be told.
std::optional<std::uintmax_t> size_of(std::filesystem::path const& p)
{
    std::error_code unknown;
    std::uintmax_t const size = std::filesystem::file_size(p, unknown);
    return unknown ? std::nullopt : std::optional{size};
}

/// EIO where `to` is shorter than the file of which it is the copy: libstdc++ loses a write error
/// behind the first block. A source that grows or shrinks meanwhile, as a log does, is copied well
/// with either of its sizes; `before` is the one that it had at first.
std::error_code error_of_cut_copy(std::optional<std::uintmax_t> before,
                                  std::filesystem::path const& from,
                                  std::filesystem::path const& to)
{
    auto const written = size_of(to);
    auto const after = size_of(from);
    bool const cut = written && before && after && *written < std::min(*before, *after);
    return cut ? std::make_error_code(std::errc::io_error) : std::error_code{};
}

/// `std::filesystem::copy_file`, and EIO where it says that a file is copied and the copy is cut.
std::error_code copy_one_file(std::filesystem::path const& from, std::filesystem::path const& to,
                              copy_options options)
{
    auto const before = size_of(from);
    std::error_code error;
    bool const copied = std::filesystem::copy_file(from, to, options, error);
    return copied ? error_of_cut_copy(before, from, to) : error;
}

/// Whether `copy` makes a copy of the contents of `from`, a regular file, and not a link to it,
/// one of its own kind, or perhaps nothing.
bool copies_contents(std::filesystem::path const& from, copy_options options)
{
    constexpr auto otherwise = copy_options::skip_existing | copy_options::update_existing |
                               copy_options::directories_only | copy_options::create_symlinks |
                               copy_options::create_hard_links;
    constexpr auto links_as_links = copy_options::copy_symlinks | copy_options::skip_symlinks;
    std::error_code unknown;
    return (options & otherwise) == copy_options::none &&
           std::filesystem::is_regular_file((options & links_as_links) == copy_options::none
                                                ? std::filesystem::status(from, unknown)
                                                : std::filesystem::symlink_status(from, unknown));
}

/// `std::filesystem::copy`, and EIO where it says that a single file is copied and the copy is
/// cut. What a whole tree should have become cannot be told from its sizes: files that grow
/// meanwhile would be taken for cut ones.
std::error_code copy_anything(std::filesystem::path const& from, std::filesystem::path const& to,
                              copy_options options)
{
    auto const before = copies_contents(from, options) ? size_of(from) : std::nullopt;
    std::error_code unknown;
    bool const into = std::filesystem::is_directory(to, unknown);
    std::error_code const error = detail::copy_tree(from, to, options);
    return error ? error : error_of_cut_copy(before, from, into ? to / from.filename() : to);
}

} // namespace

void copy(path const& from, path const& to, copy_options options)
{
    copy_by(from, to, options, copy_anything);
}

void copy(std::u16string const& from, std::u16string const& to, copy_options options)
{
    copy(path{from}, path{to}, options);
}

void copy_file(path const& from, path const& to, copy_options options)
{
    copy_by(from, to, options, copy_one_file);
}

void copy_file(std::u16string const& from, std::u16string const& to, copy_options options)
{
    copy_file(path{from}, path{to}, options);
}

void copy_directory(path const& from, path const& to)
{
    if (from.empty() || to.empty()) {
        detail::raise_empty_path();
    }
    std::string const source = detail::make_native_access_form(from.pathname());
    std::string const target = detail::make_native_access_form(to.pathname());
    boost::system::error_code error = detail::boost_refusal_of(source, target);
    if (!error) {
        // False without an error: the directory is there already, which is accepted silently.
        static_cast<void>(boost::filesystem::create_directory(target, source, error));
    }
    detail::raise_for_boost_path_pair(error, from.pathname(), to.pathname());
}

void copy_directory(std::u16string const& from, std::u16string const& to)
{
    copy_directory(path{from}, path{to});
}

} // namespace nura::filesystem
