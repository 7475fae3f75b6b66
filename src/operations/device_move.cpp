#include "operations/device_move.hpp"

#include "operations/failure_attribution.hpp"
#include "operations/tree_copy.hpp"
#include "pathname/grammar.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace nura::filesystem::detail {

namespace {

namespace stdfs = std::filesystem;

bool same_file(struct stat const& a, struct stat const& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool is_directory(stdfs::path const& p, struct stat& found)
{
    return ::lstat(p.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

/// Whether `wanted` holds for `tree` or, where that is a directory, for an entry below it, those on
/// file systems that are mounted there included. What cannot be read ends the search and is left
/// in `error`.
template <class Wanted>
bool any_of_tree(stdfs::path const& tree, std::error_code& error, Wanted wanted)
{
    if (wanted(tree)) {
        return true;
    }
    struct stat found {};
    if (!is_directory(tree, found)) {
        return false;
    }
    stdfs::recursive_directory_iterator entry{tree, error};
    for (; !error && entry != stdfs::recursive_directory_iterator{}; entry.increment(error)) {
        if (wanted(entry->path())) {
            return true;
        }
    }
    return false;
}

/// Whether the directory `from` would become a part of itself, possible where a file system is
/// mounted twice: whether the directory that holds `to`, or one that stands there, is in it.
bool moves_into_itself(stdfs::path const& from, stdfs::path const& to)
{
    struct stat parent {};
    struct stat old {};
    stdfs::path const above = to.has_parent_path() ? to.parent_path() : stdfs::path{"."};
    if (::stat(above.c_str(), &parent) != 0) {
        return false;
    }
    bool const replaces = is_directory(to, old);
    std::error_code unreadable; // the copy reports it
    return any_of_tree(from, unreadable, [&](stdfs::path const& p) {
        struct stat found {};
        return is_directory(p, found) &&
               (same_file(found, parent) || (replaces && p != from && same_file(found, old)));
    });
}

/// Whether a file system, or a part of one, is mounted at `p`. The system moves no such thing.
bool is_mount_point(stdfs::path const& p)
{
    struct statx found {};
    return ::statx(AT_FDCWD, p.c_str(), AT_SYMLINK_NOFOLLOW, 0, &found) == 0 &&
           (found.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

/// The error number with which a move within one file system would refuse `to`, and EEXIST where
/// it would replace a file: a copy that breaks off must not have cost the old one.
int refusal_by_target(struct stat const& source, stdfs::path const& to)
{
    struct stat target {};
    if (::lstat(to.c_str(), &target) != 0) {
        return 0; // missing; and what else is wrong with it, the copy finds out
    }
    if (!S_ISDIR(source.st_mode)) {
        return S_ISDIR(target.st_mode) ? EISDIR : EEXIST;
    }
    if (!S_ISDIR(target.st_mode)) {
        return ENOTDIR;
    }
    std::error_code unreadable;
    bool const empty = stdfs::is_empty(to, unreadable);
    return unreadable ? unreadable.value() : empty ? 0 : ENOTEMPTY;
}

/// Whether `p` stands for a directory without naming its entry; the system moves no such thing.
bool names_no_entry(stdfs::path const& p)
{
    std::string const last = (p.has_filename() ? p : p.parent_path()).filename().native();
    return last.empty() || grammar::is_dot_element(std::string_view{last});
}

int refusal(stdfs::path const& from, stdfs::path const& to)
{
    struct stat source {};
    if (names_no_entry(from) || names_no_entry(to) || is_mount_point(from)) {
        return EBUSY;
    }
    if (::lstat(from.c_str(), &source) != 0) {
        return errno;
    }
    if (S_ISDIR(source.st_mode) && moves_into_itself(from, to)) {
        return EINVAL;
    }
    return refusal_by_target(source, to);
}

/// Whether `to` is of the type of `from` and, for a regular file, of its size.
bool looks_copied(stdfs::path const& from, stdfs::path const& to)
{
    struct stat source {};
    struct stat copy {};
    return ::lstat(from.c_str(), &source) == 0 && ::lstat(to.c_str(), &copy) == 0 &&
           (source.st_mode & S_IFMT) == (copy.st_mode & S_IFMT) &&
           (!S_ISREG(source.st_mode) || source.st_size == copy.st_size);
}

/// Whether all of `from` arrived at `to`. The standard library loses a write error behind the
/// first block of a file, and passes over a directory that somebody else makes while it copies:
/// both come back as success, and the source would be removed.
bool is_complete_copy(stdfs::path const& from, stdfs::path const& to)
{
    std::error_code error;
    bool const any_missing = any_of_tree(from, error, [&from, &to](stdfs::path const& p) {
        return !looks_copied(p, p == from ? to : to / p.lexically_relative(from));
    });
    return !any_missing && !error;
}

/// Links are passed over: they keep the times that the copy gave them, and the files that they
/// lead to are not ours.
bool is_moved_file(stdfs::path const& p)
{
    return stdfs::is_regular_file(stdfs::symlink_status(p));
}

/// Gives the copies of regular files the modification times of their sources. What the standard
/// library throws here leaves `rename` as it is.
void carry_over_modification_times(stdfs::path const& from, stdfs::path const& to)
{
    if (is_moved_file(from) && is_moved_file(to)) {
        stdfs::last_write_time(to, stdfs::last_write_time(from));
        return;
    }
    if (!stdfs::is_directory(stdfs::symlink_status(from)) || !stdfs::is_directory(to)) {
        return;
    }
    for (stdfs::directory_entry const& entry : stdfs::recursive_directory_iterator{from}) {
        if (is_moved_file(entry.path())) {
            stdfs::path const copy = to / entry.path().lexically_relative(from);
            stdfs::last_write_time(copy, entry.last_write_time());
        }
    }
}

} // namespace

void move_across_devices(std::string const& from, std::string const& to,
                         bool preserve_last_write_time)
{
    stdfs::path const source{from};
    stdfs::path const target{to};
    if (int const error = refusal(source, target); error != 0) {
        raise_for_path_pair(error, from, to);
    }
    std::error_code const copy_error = copy_tree(
        source, target, stdfs::copy_options::recursive | stdfs::copy_options::copy_symlinks);
    if (copy_error) {
        raise_for_path_pair(copy_error.value(), from, to);
    }
    if (!is_complete_copy(source, target)) {
        raise_for_path_pair(EIO, from, to);
    }
    if (preserve_last_write_time) {
        carry_over_modification_times(source, target);
    }
    std::error_code removal_error;
    stdfs::remove_all(source, removal_error);
    if (removal_error) {
        // The number of the copy, which is 0, and not that of the removal: it tells callers that
        // the copy is complete.
        raise_for_path_pair(copy_error.value(), from, to);
    }
}

} // namespace nura::filesystem::detail
