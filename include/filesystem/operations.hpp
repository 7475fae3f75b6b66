#pragma once

/// \file
/// Queries and changes of the file system.
///
/// Every operation is a function with two overloads. The one for `std::u16string` brings its
/// argument into native form first (`detail::make_native_form` with tilde expansion); the one
/// for `path` uses the path as it stands. Failures are thrown as the types of `exceptions.hpp`;
/// besides those named at an operation, any can throw `std::bad_alloc`. The error numbers in the
/// comments are those of the system call that is named.
///
/// How an error number becomes a type, everywhere:
///
/// | Error number | Type |
/// |---|---|
/// | ENOENT | `PathNotFound` |
/// | EACCES | `AccessDenied` |
/// | EEXIST | `FileExistsError` |
/// | ENOTDIR | `NotDirectoryError` |
/// | EISDIR | `FileIsDirectory` |
/// | EINVAL, ENOTSUP | `InvalidArgument`, without a text |
/// | ENAMETOOLONG | `FileNameTooLarge` |
/// | ENOTEMPTY | `DirectoryNotEmpty` |
/// | any other | `SystemError`, with the number |
///
/// A pathname that holds U+0000 is never cut short: it fails as if the system had answered
/// EINVAL, and nothing is touched.
///
/// Where an argument is of a type from namespace `std`, qualify the call
/// (`namespace nfs = nura::filesystem; nfs::status(...)`): argument-dependent lookup would
/// bring the standard library's functions of the same name in as well.

#include "basic_path.hpp"
#include "export.hpp"
#include "file_status.hpp"

#include <boost/filesystem/operations.hpp>

#include <filesystem>
#include <string>

namespace nura::filesystem {

/// \name Status
/// @{

/// True if something stands at `p`, symbolic links followed (`stat`).
///
/// False for the empty pathname, without a system call; for a missing name, a dangling link and
/// a name below something that is no directory; for a name that holds U+0000.
///
/// \throws AccessDenied, FileNameTooLarge or SystemError (ELOOP and the like), each with the
///         pathname, where the system does not answer the question
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool exists(path const& p);
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool exists(std::u16string const& p);

/// What stands at `p`, symbolic links followed (`stat`).
///
/// The not-found value for the empty pathname, a missing name, a dangling link and a name that
/// holds U+0000.
///
/// \throws NotDirectoryError for a name below something that is no directory (where `exists`
///         answers false); AccessDenied, FileNameTooLarge or SystemError otherwise. None of
///         them carries a pathname.
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status status(path const& p);
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status status(std::u16string const& p);

/// What stands at `p`, a symbolic link itself in place of its target (`lstat`); otherwise as
/// `status`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status symlink_status(path const& p);
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status symlink_status(std::u16string const& p);

/// Type, modification time and size only, symbolic links followed (`stat`). `p` is used as
/// given: no native form, no tilde.
///
/// The not-found value for the empty pathname, a missing name and a name that holds U+0000.
///
/// \throws NotDirectoryError, AccessDenied, FileNameTooLarge, InvalidArgument (ENOTSUP) or
///         SystemError, each with the pathname, unlike `status`
[[nodiscard]] NURA_FILESYSTEM_EXPORT light_file_status
status_express_light(std::u16string const& p);

/// @}
/// \name Access and permissions
/// @{

/// What `access` asks for; combine with `|`.
inline constexpr unsigned int access_exists = 1;
inline constexpr unsigned int access_read = 2;
inline constexpr unsigned int access_write = 4;
inline constexpr unsigned int access_execute = 8;

/// Whether the process, by its real user and group, may do with `p` all that `mode` asks for
/// (`access`, symbolic links followed).
///
/// `access_exists` turns a missing file from a failure into the answer false and, the other way
/// round, a refusal on the way to the file from the answer false into a failure. A read-only
/// file system answers false to `access_write`.
///
/// \throws InvalidArgument "Empty Path not permitted" (tested first, on the native form) or
///         "Unsupported Access Mode" (0, or more than the four bits), no pathname
/// \throws PathNotFound with the pathname, for a missing file without `access_exists`
/// \throws AccessDenied with the pathname, with `access_exists` where the file cannot be
///         reached
/// \throws NotDirectoryError, FileNameTooLarge, InvalidArgument or SystemError with the
///         pathname
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool access(path const& p, unsigned int mode);
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool access(std::u16string const& p, unsigned int mode);

/// Sets the permission bits of `p` to those in `perms` (`chmod`, symbolic links followed), or
/// adds or removes them with `file_status::perms_add` or `perms_remove`. Type and attribute
/// bits (0xF000) in `perms` are ignored.
///
/// With `file_status::perms_symlink`, and where `p` is a symbolic link, the link itself is meant:
/// Linux refuses that with ENOTSUP, so `InvalidArgument`.
///
/// \throws InvalidArgument "Empty Path not permitted", or "File Permission not valid" for
///         `perms_add` together with `perms_remove` and for all sixteen bits of
///         `perms_unknown`; no pathname
/// \throws PathNotFound for a missing file, AccessDenied, NotDirectoryError and the other types
///         by the error number; none of them carries a pathname
NURA_FILESYSTEM_EXPORT void permissions(path const& p, unsigned int perms);
NURA_FILESYSTEM_EXPORT void permissions(std::u16string const& p, unsigned int perms);

/// @}
/// \name Current directory
/// It belongs to the process. Reads and changes made through the library exclude one another,
/// and a child that a threaded program forks can go on using it.
/// @{

/// The current directory (`getcwd`) in native form, whatever its length; empty where its name
/// cannot be converted.
///
/// \throws PathNotFound without a pathname if the directory was removed; the other types by the
///         error number, without a pathname
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string get_current_path();

/// Makes `p` the current directory (`chdir`). False, and nothing changes, for the empty
/// pathname; true otherwise.
///
/// \throws PathNotFound, NotDirectoryError, AccessDenied and the other types by the error
///         number, with the pathname
NURA_FILESYSTEM_EXPORT bool change_current_path(path const& p);
NURA_FILESYSTEM_EXPORT bool change_current_path(std::u16string const& p);

/// @}
/// \name Directory creation
/// By way of `std::filesystem`: an unpaired surrogate throws `std::runtime_error` "locale not
/// supported" before anything is touched.
/// @{

/// Creates the directory `p` in an existing directory.
///
/// \throws InvalidArgument "Empty Path not permitted", no pathname
/// \throws FileExistsError with the pathname if anything of that name exists, a directory
///         included
/// \throws PathNotFound (no parent), AccessDenied and the other types by the error number, with
///         the pathname
NURA_FILESYSTEM_EXPORT void create_directory(path const& p);
NURA_FILESYSTEM_EXPORT void create_directory(std::u16string const& p);

/// Creates the directory `p` and every missing directory above it.
///
/// \throws InvalidArgument "Empty Path not permitted", no pathname
/// \throws FileExistsError with the pathname if the directory exists already, unlike the
///         standard function: where it only has to be there, catch this type
/// \throws NotDirectoryError (something else stands on the way), AccessDenied and the other types
///         by the error number, with the pathname
NURA_FILESYSTEM_EXPORT void create_directories(path const& p);
NURA_FILESYSTEM_EXPORT void create_directories(std::u16string const& p);

/// @}
/// \name Removal
/// All of these do nothing for the empty pathname, and remove a symbolic link itself.
/// @{

/// Removes a file, a link or an empty directory, by way of `std::filesystem::remove`.
///
/// \throws PathNotFound with the pathname if there is none
/// \throws DirectoryNotEmpty, AccessDenied and the other types by the error number, with the
///         pathname
/// \throws std::runtime_error "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void remove(path const& p);
NURA_FILESYSTEM_EXPORT void remove(std::u16string const& p);

/// Removes an empty directory if `flags` is `file_status::directory_file` exactly, else
/// anything but a directory.
///
/// \throws as `remove_directory` or `remove_file`
NURA_FILESYSTEM_EXPORT void remove(path const& p, unsigned int flags);
NURA_FILESYSTEM_EXPORT void remove(std::u16string const& p, unsigned int flags);

/// Removes anything but a directory (`unlink`).
///
/// \throws FileIsDirectory with the pathname for a directory, and for every EPERM: systems
///         answer so when asked to unlink a directory
/// \throws PathNotFound, AccessDenied and the other types by the error number, with the pathname
NURA_FILESYSTEM_EXPORT void remove_file(path const& p);
NURA_FILESYSTEM_EXPORT void remove_file(std::u16string const& p);

/// The same as `remove_file`: it does not ask whether `p` is a link.
NURA_FILESYSTEM_EXPORT void remove_symlink(path const& p);
NURA_FILESYSTEM_EXPORT void remove_symlink(std::u16string const& p);

/// Removes an empty directory (`rmdir`).
///
/// \throws DirectoryNotEmpty, NotDirectoryError, PathNotFound and the other types by the error
///         number, with the pathname
NURA_FILESYSTEM_EXPORT void remove_directory(path const& p);
NURA_FILESYSTEM_EXPORT void remove_directory(std::u16string const& p);

/// Removes `p` and, if it is a directory, all that is in it; links in the tree are removed and
/// never followed.
///
/// No file outside the tree is removed, whatever another process swaps meanwhile: each directory
/// is held open and its entries are removed relative to it. The depth of the tree is limited by
/// the descriptors that the process may open, one for each level.
///
/// \throws PathNotFound without a pathname if `p`, or an entry that was just read, does not
///         exist
/// \throws AccessDenied, SystemError (no descriptor left, a read-only file system) and the other
///         types by the error number, with the full pathname of the entry concerned. What was
///         removed stays removed.
NURA_FILESYSTEM_EXPORT void remove_all(path const& p);
NURA_FILESYSTEM_EXPORT void remove_all(std::u16string const& p);

/// @}
/// \name Rename
/// @{

/// What `rename` does when it has to copy.
struct rename_options {
    /// Copy the modification time of every regular file when moving to another file system.
    bool preserve_last_write_time = false;
};

/// Gives `from` the name `to` (`rename`), or moves it to another file system.
///
/// Within one file system an existing file, or an empty directory where `from` is a directory,
/// is replaced, atomically. Across file systems the source is copied with all that is in it,
/// links as links, and removed once the copy is complete; an existing file is then not
/// replaced. When the copy fails, the source is whole, and what was already copied stays.
///
/// \throws InvalidArgument "Empty Path not permitted", no pathname, tested on the native forms
/// \throws PathNotFound with `from` if that is missing, else with `to`
/// \throws FileExistsError, NotDirectoryError, FileIsDirectory, DirectoryNotEmpty,
///         FileNameTooLarge with `to`
/// \throws AccessDenied with `from` if the directory that holds it is not writable, else with
///         `to`
/// \throws InvalidArgument or SystemError with `from`, and `to` in `other_pathnames()`;
///         error number 0 says that the copy is complete and the source could not be removed
/// \throws std::filesystem::filesystem_error if times cannot be preserved; nothing is removed
///
/// A source of 1,024 UTF-16 code units or more is the one that any failure names.
NURA_FILESYSTEM_EXPORT void rename(path const& from, path const& to,
                                   rename_options const& options = {});
NURA_FILESYSTEM_EXPORT void rename(std::u16string const& from, std::u16string const& to,
                                   rename_options const& options = {});

/// @}
/// \name Symbolic links
/// By way of `std::filesystem`: an unpaired surrogate throws `std::runtime_error` "locale not
/// supported" before anything is made. No failure carries a pathname.
/// @{

/// Creates the symbolic link `link` with the text `target`.
///
/// `type` chooses between a link to a directory (`file_status::directory_file`) and one to a
/// file; for any other value the target is looked at (`status`), relative to the current
/// directory. The string overload brings the target into native form as well. An empty
/// pathname on either side is the system's to refuse.
///
/// \throws FileExistsError, PathNotFound and the other types by the error number, without a
///         pathname; also what `status` throws for the target, before anything is made
NURA_FILESYSTEM_EXPORT void create_symlink(path const& target, path const& link,
                                           unsigned int type = file_status::file_type_auto);
NURA_FILESYSTEM_EXPORT void create_symlink(std::u16string const& target, std::u16string const& link,
                                           unsigned int type = file_status::file_type_auto);

/// Creates the symbolic link `new_link` with the text of `existing_link`.
///
/// \throws InvalidArgument (not a link), PathNotFound, FileExistsError and the other types by the
///         error number, without a pathname
NURA_FILESYSTEM_EXPORT void copy_symlink(path const& existing_link, path const& new_link);
NURA_FILESYSTEM_EXPORT void copy_symlink(std::u16string const& existing_link,
                                         std::u16string const& new_link);

/// The text of the symbolic link `p` (`readlink`), whatever its length: a relative target stays
/// relative to the link's directory. The string overload returns the text as it is stored, the
/// other one in native form. Empty for the empty pathname.
///
/// \throws InvalidArgument (not a link), PathNotFound and the other types by the error number,
///         with the pathname
[[nodiscard]] NURA_FILESYSTEM_EXPORT path read_symlink(path const& p);
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string read_symlink(std::u16string const& p);

/// @}
/// \name Copying
/// @{

/// Copies a file, a directory or a link, by way of `std::filesystem::copy`, whose options and
/// rules hold.
///
/// \throws InvalidArgument with a text that begins with "Invalid combination selected", no
///         pathname, if options contradict one another
/// \throws as `rename` does within one file system for any other failure
/// \throws std::runtime_error "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void
copy(path const& from, path const& to,
     std::filesystem::copy_options options = std::filesystem::copy_options::none);
NURA_FILESYSTEM_EXPORT void
copy(std::u16string const& from, std::u16string const& to,
     std::filesystem::copy_options options = std::filesystem::copy_options::none);

/// Copies the contents and permissions of a regular file, by way of
/// `std::filesystem::copy_file`. Whether the options had it skipped is not reported.
///
/// \throws as `copy`
NURA_FILESYSTEM_EXPORT void
copy_file(path const& from, path const& to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none);
NURA_FILESYSTEM_EXPORT void
copy_file(std::u16string const& from, std::u16string const& to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none);

/// Creates the directory `to` with the permissions of the directory `from`, less the umask; the
/// contents are not copied. An existing directory `to` is left as it is, without a failure.
///
/// The pathnames in its failures, but for the empty ones, are narrowed to the low byte of each
/// unit and decoded as UTF-8; outside ASCII they differ from the real ones.
///
/// \throws InvalidArgument "Empty Path not permitted", no pathname
/// \throws PathNotFound with `from` if that is missing, else with `to`
/// \throws FileExistsError, FileNameTooLarge with `to`; FileIsDirectory with `from`
/// \throws AccessDenied with `from` if that is not readable, else with `to`
/// \throws NotDirectoryError, DirectoryNotEmpty with `from`
/// \throws InvalidArgument or SystemError with `from`, and `to` in `other_pathnames()`
NURA_FILESYSTEM_EXPORT void copy_directory(path const& from, path const& to);
NURA_FILESYSTEM_EXPORT void copy_directory(std::u16string const& from, std::u16string const& to);

/// @}
/// \name Resolution
/// An empty pathname gives an empty result. An empty base is the current directory, and a base
/// is looked at only where `p` is relative.
/// @{

/// `p` behind `base`, without asking the file system: dot elements stay.
///
/// \throws InvalidArgument "Invalid Base Path", no pathname, if the base is relative; what
///         `get_current_path` throws
[[nodiscard]] NURA_FILESYSTEM_EXPORT path absolute(path const& p, path const& base = {});
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string absolute(std::u16string const& p,
                                                             std::u16string const& base = {});

/// The one name of what `p` names, free of links and dot elements (`realpath`), whatever its
/// length.
///
/// \throws PathNotFound without a pathname if nothing has this name, and where `p` or the base
///         has no native name
/// \throws InvalidArgument "Invalid Base Path", no pathname, if the base is relative
/// \throws AccessDenied, SystemError (ELOOP) and the other types by the error number, with the
///         absolute pathname; what `get_current_path` throws
[[nodiscard]] NURA_FILESYSTEM_EXPORT path canonical(path const& p, path const& base = {});
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string canonical(std::u16string const& p,
                                                              std::u16string const& base = {});

/// The canonical form of the longest leading part of `p` that exists, with the rest behind it.
/// The rest is normalised only if "." or ".." is one of its elements.
///
/// An element of the rest, or one that is reached on the way there, that begins with '~' is
/// expanded like a tail that is appended to a path; expanded to an absolute pathname it is
/// refused.
///
/// \throws InvalidArgument "Absolute path not permitted", no pathname, for such an element
/// \throws AccessDenied, SystemError (ELOOP) and the other types by the error number, with the
///         pathname; a missing file is no failure
[[nodiscard]] NURA_FILESYSTEM_EXPORT path weakly_canonical(path const& p);
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string weakly_canonical(std::u16string const& p);

/// The way to `p` from the directory `base`, by the weakly canonical forms of both: `../b/c`
/// from `/a/d` to `/a/b/c`. Empty where there is none. The base is resolved first, even if `p`
/// is empty.
///
/// \throws what `weakly_canonical` and `get_current_path` throw
[[nodiscard]] NURA_FILESYSTEM_EXPORT path relative(path const& p, path const& base = {});
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string relative(std::u16string const& p,
                                                             std::u16string const& base = {});

/// Whether two pathnames name the same file, symbolic links followed. The string overload does
/// not bring its arguments into native form.
///
/// False if exactly one of them is empty, has no native name, or does not exist.
///
/// \throws InvalidArgument "Empty Path not permitted", no pathname, if both are empty
/// \throws PathNotFound without a pathname if neither has a native name
/// \throws the other types by the error number, as `copy_directory` does, with pathnames
///         narrowed to the low byte of each unit
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool equivalent(path const& p1, path const& p2);
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool equivalent(std::u16string const& p1,
                                                     std::u16string const& p2);

/// @}
/// \name Space, network names and shortcuts
/// @{

/// `capacity`, `free` and `available` bytes of a file system, as Boost.Filesystem counts them.
using space_info = boost::filesystem::space_info;

/// How much room the file system that holds `p` has (`statvfs`). There is no string overload.
///
/// \throws InvalidArgument "Empty Path not permitted", no pathname
/// \throws PathNotFound, AccessDenied and the other types by the error number, with the pathname
///         narrowed to the low byte of each unit and decoded as UTF-8
[[nodiscard]] NURA_FILESYSTEM_EXPORT space_info space(path const& p);

/// The network name of `p`, which on POSIX systems is `p` itself after a round trip through its
/// native name; `flag` is ignored. Empty for the empty pathname and where the round trip fails.
/// The string overload does not bring its argument into native form.
[[nodiscard]] NURA_FILESYSTEM_EXPORT path get_unc_path(path const& p, bool flag);
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string get_unc_path(std::u16string const& p,
                                                                 bool flag);

/// Shortcuts do not exist on POSIX systems: nothing is created.
///
/// \throws InvalidOperation always
NURA_FILESYSTEM_EXPORT void create_shortcut(path const& target, path const& shortcut);
NURA_FILESYSTEM_EXPORT void create_shortcut(std::u16string const& target,
                                            std::u16string const& shortcut);

/// @}

} // namespace nura::filesystem
