#include "operations/device_move.hpp"

#include "native/handles.hpp"
#include "operations/failure_attribution.hpp"
#include "operations/tree_copy.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

namespace nura::filesystem::detail {

namespace {

namespace stdfs = std::filesystem;
using posix::detail::descriptor;

constexpr int any_directory = O_PATH | O_DIRECTORY | O_CLOEXEC;

bool same_file(struct stat const& a, struct stat const& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether `top` is the directory `at` or one above it. Follows ".." and not the name, so that a
/// mount in between hides nothing.
bool is_at_or_above(struct stat const& top, descriptor at)
{
    struct stat here {};
    struct stat below {};
    while (at && ::fstat(at.number(), &here) == 0) {
        if (same_file(here, top)) {
            return true;
        }
        if (same_file(here, below)) {
            return false; // the root is its own parent
        }
        below = here;
        at = descriptor{::openat(at.number(), "..", any_directory)};
    }
    return false;
}

/// Whether the directory `source` would become a part of itself: possible where a file system is
/// mounted below it.
bool moves_into_itself(struct stat const& source, stdfs::path const& to)
{
    stdfs::path const parent = to.has_parent_path() ? to.parent_path() : stdfs::path{"."};
    return S_ISDIR(source.st_mode) &&
           is_at_or_above(source, descriptor{::open(parent.c_str(), any_directory)});
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

int refusal(stdfs::path const& from, stdfs::path const& to)
{
    struct stat source {};
    if (::lstat(from.c_str(), &source) != 0) {
        return errno;
    }
    int const by_target = refusal_by_target(source, to);
    return by_target == 0 && moves_into_itself(source, to) ? EINVAL : by_target;
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
