#include "operations/tree_removal.hpp"

#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "native/handles.hpp"
#include "native/system_call.hpp"

#include <filesystem/pathname_traits.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string_view>
#include <vector>

namespace nura::filesystem::detail {

namespace {

using constants = pathname_traits<char>;
using posix::detail::descriptor;
using posix::detail::directory_stream;

constexpr int real_directory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool is_dot_entry(std::string_view name)
{
    return name == constants::CURRENT_DIRECTORY || name == constants::PARENT_DIRECTORY;
}

/// A name relative to a directory that is held open: whatever becomes of the directories above,
/// it means the same place.
struct entry {
    int directory;
    std::string name;
};

/// Whether `at` is a directory and no link. `full` is what failures name, except that nothing is
/// named where the entry is missing.
bool is_directory(entry const& at, std::string const& full)
{
    struct stat found {};
    if (::fstatat(at.directory, at.name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0) {
        return S_ISDIR(found.st_mode);
    }
    int const error = errno;
    if (error == ENOENT) {
        raise(PathNotFound{{}});
    }
    throw_errno_exception(error, full, {});
}

void unlink_entry(entry const& at, std::string const& full, int flags = 0)
{
    if (::unlinkat(at.directory, at.name.c_str(), flags) != 0) {
        int const error = errno;
        throw_errno_exception(error, full, {});
    }
}

/// The walk over a tree, depth first, in the order in which directories yield their entries. It
/// holds one open stream for each level and does not recurse.
class tree_walk {
public:
    /// `full` is the pathname of `top` for failures.
    tree_walk(entry top, std::string full) : full_{std::move(full)} { enter(std::move(top)); }

    void run()
    {
        while (!levels_.empty()) {
            step();
        }
    }

private:
    /// A directory whose entries are being removed.
    struct level {
        entry place;               ///< where it was found
        std::size_t parent_length; ///< of the pathname of the directory above
        directory_stream entries;  ///< holds it open
        dev_t device;              ///< with `inode`, which directory it is
        ino_t inode;
    };

    /// Goes down into the directory at `place`; `full_` is its pathname. What is no directory
    /// any more is dealt with at once.
    void enter(entry place, std::size_t parent_length = 0)
    {
        descriptor held{::openat(place.directory, place.name.c_str(), real_directory)};
        if (!held) {
            int const error = errno;
            finish(place, error);
            full_.resize(parent_length);
            return;
        }
        struct stat found {};
        level below{std::move(place), parent_length, nullptr, 0, 0};
        if (::fstat(held.number(), &found) == 0) {
            below.entries.reset(::fdopendir(held.number()));
        }
        if (below.entries == nullptr) {
            int const error = errno;
            throw_errno_exception(error, full_, {});
        }
        static_cast<void>(held.release()); // the stream owns it now
        below.device = found.st_dev;
        below.inode = found.st_ino;
        levels_.push_back(std::move(below));
    }

    /// Removes the next entry of the deepest level, goes down into it, or leaves the level.
    void step()
    {
        level const& current = levels_.back();
        errno = 0;
        dirent const* const found = ::readdir(current.entries.get());
        if (found == nullptr) {
            int const error = errno;
            leave(error);
            return;
        }
        std::string_view const name{found->d_name};
        if (is_dot_entry(name)) {
            return;
        }
        entry child{::dirfd(current.entries.get()), std::string{name}};
        std::size_t const parent_length = full_.size();
        full_ += constants::PATHNAME_SEPARATOR_CHARACTER;
        full_ += name;
        bool const child_is_directory = is_directory(child, full_);
        if (int const error = moved_away(current); error != 0) {
            full_.resize(parent_length);
            leave(error); // and the child stays
            return;
        }
        if (child_is_directory) {
            enter(std::move(child), parent_length);
            return;
        }
        unlink_entry(child, full_);
        full_.resize(parent_length);
    }

    /// An error number unless the directory still stands, itself and no other, where it was
    /// found.
    static int moved_away(level const& current)
    {
        descriptor const again{
            ::openat(current.place.directory, current.place.name.c_str(), real_directory)};
        if (!again) {
            return errno;
        }
        struct stat here {};
        if (::fstat(again.number(), &here) != 0) {
            return errno;
        }
        return here.st_dev == current.device && here.st_ino == current.inode ? 0 : ENOTDIR;
    }

    /// Closes the deepest level, whose walk ended with `error`, and removes its directory.
    void leave(int error)
    {
        level done = std::move(levels_.back());
        levels_.pop_back();
        if (::closedir(done.entries.release()) != 0) {
            int const close_error = errno;
            throw_errno_exception(close_error, {}, {});
        }
        finish(done.place, error);
        full_.resize(done.parent_length);
    }

    /// What becomes of a directory once its walk has ended with `error`.
    void finish(entry const& place, int error) const
    {
        switch (error) {
        case 0:
            unlink_entry(place, full_, AT_REMOVEDIR);
            return;
        case ENOENT:
            return; // it is gone already
        case ENOTDIR:
        case ELOOP:
            unlink_entry(place, full_); // what took its place goes, and is never followed
            return;
        default:
            throw_errno_exception(error, full_, {});
        }
    }

    std::string full_;          ///< pathname of the entry at hand
    std::vector<level> levels_; ///< from the top down
};

/// Names that stand for a directory without naming its entry are left to the system as they are.
/// `last` is what stands behind the last separator.
bool names_no_entry(std::string_view last)
{
    return last.empty() || is_dot_entry(last);
}

/// Removes what is at `top`, whose pathname is `native`.
void remove_at(entry top, std::string const& native)
{
    if (is_directory(top, native)) {
        tree_walk{std::move(top), native}.run();
    } else {
        unlink_entry(top, native);
    }
}

} // namespace

void remove_tree(std::string const& native)
{
    if (posix::detail::holds_nul(native)) {
        throw_errno_exception(EINVAL, native, {});
    }
    std::size_t const separator = native.rfind(constants::PATHNAME_SEPARATOR_CHARACTER);
    std::string const last = separator == std::string::npos ? native : native.substr(separator + 1);
    if (names_no_entry(last)) {
        remove_at({AT_FDCWD, native}, native);
        return;
    }
    std::string const parent = separator == std::string::npos ? constants::CURRENT_DIRECTORY
                                                              : native.substr(0, separator + 1);
    if (native.size() >= PATH_MAX) {
        throw_errno_exception(ENAMETOOLONG, native, {}); // as for the name in one piece
    }
    descriptor const holder{::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
    if (!holder) {
        int const error = errno;
        if (error == ENOENT) {
            raise(PathNotFound{{}});
        }
        throw_errno_exception(error, native, {});
    }
    remove_at({holder.number(), last}, native);
}

} // namespace nura::filesystem::detail
