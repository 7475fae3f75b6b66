#pragma once

/// \file
/// Queries and changes of the file system.
///
/// Every operation is a function with two overloads. The one for `std::u16string` brings its
/// argument into native form first (`detail::make_native_form` with tilde expansion); the one
/// for `path` uses the path as it stands, but for the few that say otherwise. Failures are thrown
/// as the types of `exceptions.hpp`; besides those named at an operation, any can throw
/// `std::bad_alloc`. The error numbers in the comments are those of the system call that is named.
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

/// \defgroup status Status
/// What stands at a pathname.
/// @{

/// True if something stands at `p`, symbolic links followed (`stat`).
///
/// False for the empty pathname, without a system call; for a missing name, a dangling link and
/// a name below something that is no directory; for a name that holds U+0000.
///
/// \code{.cpp}
/// bool const first_start = !nfs::exists(u"~/.config/editor");
/// \endcode
///
/// \par Errors
/// - `AccessDenied`, `FileNameTooLarge`, `SystemError` (ELOOP and the like) with the pathname,
///   where the system does not answer the question
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool exists(path const& p);
/// The same for text, which is brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool exists(std::u16string const& p);

/// What stands at `p`, symbolic links followed (`stat`).
///
/// The not-found value for the empty pathname, a missing name, a dangling link and a name that
/// holds U+0000.
///
/// \code{.cpp}
/// nfs::file_status const found = nfs::status(u"/var/log/syslog");
/// if (found.is_regular_file()) {
///     std::cout << found.size() << " bytes\n";
/// }
/// \endcode
///
/// \par Errors
/// None of them carries a pathname.
/// - `NotDirectoryError` for a name below something that is no directory, where `exists` answers
///   false
/// - `AccessDenied`, `FileNameTooLarge`, `SystemError` (ELOOP and the like)
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status status(path const& p);
/// The same for text, which is brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status status(std::u16string const& p);

/// What stands at `p`, a symbolic link itself in place of its target (`lstat`); otherwise as
/// `status`, dangling links excepted: they are found.
///
/// \code{.cpp}
/// bool const is_link = nfs::symlink_status(u"/etc/localtime").is_symlink();
/// \endcode
///
/// \par Errors
/// Those of `status`, without a pathname.
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status symlink_status(path const& p);
/// The same for text, which is brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT file_status symlink_status(std::u16string const& p);

/// Type, modification time and size only, symbolic links followed (`stat`). `p` is used as
/// given: no native form, no tilde.
///
/// The not-found value for the empty pathname, a missing name and a name that holds U+0000.
///
/// \code{.cpp}
/// std::uint64_t const bytes = nfs::status_express_light(u"/var/log/syslog").size();
/// \endcode
///
/// \par Errors
/// - `NotDirectoryError`, `AccessDenied`, `FileNameTooLarge`, `InvalidArgument` (ENOTSUP) or
///   `SystemError`, each with the pathname, unlike `status`
[[nodiscard]] NURA_FILESYSTEM_EXPORT light_file_status
status_express_light(std::u16string const& p);

/// @}
/// \defgroup access Access and permissions
/// What the process may do with a file, and what its mode bits are.
/// @{

/// What `access` asks for; combine with `|`. This one: is there such a file?
inline constexpr unsigned int access_exists = 1;
inline constexpr unsigned int access_read = 2;    ///< May it be read?
inline constexpr unsigned int access_write = 4;   ///< May it be written to?
inline constexpr unsigned int access_execute = 8; ///< May it be executed, or searched?

/// Whether the process, by its real user and group, may do with `p` all that `mode` asks for
/// (`access`, symbolic links followed).
///
/// `access_exists` turns a missing file from a failure into the answer false and, the other way
/// round, a refusal on the way to the file from the answer false into a failure. A read-only
/// file system answers false to `access_write`.
///
/// \code{.cpp}
/// bool const editable = nfs::access(u"~/notes.txt", nfs::access_exists | nfs::access_write);
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` "Empty Path not permitted" (tested first, on the native form) or
///   "Unsupported Access Mode" (0, or more than the four bits), no pathname
/// - `PathNotFound` with the pathname, for a missing file without `access_exists`
/// - `AccessDenied` with the pathname, with `access_exists` where the file cannot be reached
/// - `NotDirectoryError`, `FileNameTooLarge`, `InvalidArgument` or `SystemError` with the
///   pathname
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool access(path const& p, unsigned int mode);
/// The same for text, which is brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool access(std::u16string const& p, unsigned int mode);

/// Sets the permission bits of `p` to those in `perms` (`chmod`, symbolic links followed), or
/// adds or removes them with `file_status::perms_add` or `perms_remove`. Type and attribute
/// bits (0xF000) in `perms` are ignored.
///
/// With `file_status::perms_symlink`, and where `p` is a symbolic link, the link itself is meant:
/// Linux refuses that with ENOTSUP, so `InvalidArgument`.
///
/// \code{.cpp}
/// nfs::permissions(u"run.sh", nfs::file_status::perms_add | nfs::file_status::owner_exec);
/// \endcode
///
/// \par Errors
/// None of them carries a pathname.
/// - `InvalidArgument` "Empty Path not permitted", or "File Permission not valid" for
///   `perms_add` together with `perms_remove` and for all sixteen bits of `perms_unknown`
/// - `PathNotFound` for a missing file, `AccessDenied`, `NotDirectoryError` and the other types
///   by the error number
NURA_FILESYSTEM_EXPORT void permissions(path const& p, unsigned int perms);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void permissions(std::u16string const& p, unsigned int perms);

/// @}
/// \defgroup current_directory Current directory
/// It belongs to the process. Reads and changes made through the library exclude one another,
/// and a child that a threaded program forks can go on using it.
/// @{

/// The current directory (`getcwd`) in native form, whatever its length.
///
/// \code{.cpp}
/// nfs::path const here{nfs::get_current_path()};
/// \endcode
///
/// \par Errors
/// - `PathNotFound` without a pathname if the directory was removed; the other types by the
///   error number, without a pathname
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string get_current_path();

/// Makes `p` the current directory (`chdir`). False, and nothing changes, for the empty
/// pathname; true otherwise.
///
/// \code{.cpp}
/// nfs::change_current_path(u"~");
/// \endcode
///
/// \par Errors
/// - `PathNotFound`, `NotDirectoryError`, `AccessDenied` and the other types by the error
///   number, with the pathname
NURA_FILESYSTEM_EXPORT bool change_current_path(path const& p);
/// The same for text, which is brought into native form first. Text that is not empty but whose
/// native form is (`~` without a home directory) is a `PathNotFound`.
NURA_FILESYSTEM_EXPORT bool change_current_path(std::u16string const& p);

/// @}
/// \defgroup directory_creation Directory creation
/// By way of `std::filesystem`: an unpaired surrogate throws `std::runtime_error` "locale not
/// supported" before anything is touched.
/// @{

/// Creates the directory `p` in an existing directory.
///
/// \code{.cpp}
/// nfs::create_directory(u"~/été");
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` "Empty Path not permitted", no pathname
/// - `FileExistsError` with the pathname if anything of that name exists, a directory included
/// - `PathNotFound` (no parent), `AccessDenied` and the other types by the error number, with
///   the pathname
/// - `std::runtime_error` "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void create_directory(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void create_directory(std::u16string const& p);

/// Creates the directory `p` and every missing directory above it.
///
/// \code{.cpp}
/// try {
///     nfs::create_directories(u"~/.local/share/editor/backup");
/// } catch (nfs::FileExistsError const&) {
///     // it is there already, or a link that leads nowhere is
/// }
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` "Empty Path not permitted", no pathname
/// - `FileExistsError` with the pathname if the directory exists already, unlike the standard
///   function: where it only has to be there, catch this type. Also if a link that leads nowhere
///   stands there or on the way
/// - `NotDirectoryError` (something else stands there or on the way), `AccessDenied` and the
///   other types by the error number, with the pathname
/// - `std::runtime_error` "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void create_directories(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void create_directories(std::u16string const& p);

/// @}
/// \defgroup removal Removal
/// All of these do nothing for the empty pathname, and none follows a symbolic link.
/// @{

/// Removes a file, a link or an empty directory, by way of `std::filesystem::remove`.
///
/// \code{.cpp}
/// nfs::remove(u"~/old.txt");
/// \endcode
///
/// \par Errors
/// - `PathNotFound` with the pathname if there is none
/// - `DirectoryNotEmpty`, `AccessDenied` and the other types by the error number, with the
///   pathname
/// - `std::runtime_error` "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void remove(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void remove(std::u16string const& p);

/// Removes an empty directory if `flags` is `file_status::directory_file` exactly, else
/// anything but a directory.
///
/// \code{.cpp}
/// nfs::remove(u"~/empty", nfs::file_status::directory_file);
/// \endcode
///
/// \par Errors
/// Those of `remove_directory` or of `remove_file`.
NURA_FILESYSTEM_EXPORT void remove(path const& p, unsigned int flags);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void remove(std::u16string const& p, unsigned int flags);

/// Removes anything but a directory (`unlink`).
///
/// \code{.cpp}
/// nfs::remove_file(u"~/old.txt");
/// \endcode
///
/// \par Errors
/// - `FileIsDirectory` with the pathname for a directory, and for every EPERM: systems answer so
///   when asked to unlink a directory
/// - `PathNotFound`, `AccessDenied` and the other types by the error number, with the pathname
NURA_FILESYSTEM_EXPORT void remove_file(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void remove_file(std::u16string const& p);

/// The same as `remove_file`: it does not ask whether `p` is a link.
///
/// \code{.cpp}
/// nfs::remove_symlink(u"~/shortcut"); // what it leads to stays
/// \endcode
///
/// \par Errors
/// Those of `remove_file`.
NURA_FILESYSTEM_EXPORT void remove_symlink(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void remove_symlink(std::u16string const& p);

/// Removes an empty directory (`rmdir`).
///
/// \code{.cpp}
/// nfs::remove_directory(u"~/empty");
/// \endcode
///
/// \par Errors
/// - `DirectoryNotEmpty`, `NotDirectoryError`, `PathNotFound` and the other types by the error
///   number, with the pathname
NURA_FILESYSTEM_EXPORT void remove_directory(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void remove_directory(std::u16string const& p);

/// Removes `p` and, if it is a directory, all that is in it; links in the tree are removed and
/// never followed.
///
/// No file outside the tree is removed, whatever another process swaps meanwhile: each directory
/// is held open and its entries are removed relative to it. The depth of the tree is limited by
/// the descriptors that the process may open, one for each level.
///
/// \code{.cpp}
/// try {
///     nfs::remove_all(u"~/.cache/editor");
/// } catch (nfs::PathNotFound const&) {
///     // there was none
/// }
/// \endcode
///
/// \par Errors
/// What was removed before a failure stays removed.
/// - `PathNotFound` without a pathname if `p`, or an entry that was just read, does not exist
/// - `AccessDenied`, `SystemError` (no descriptor left, a read-only file system) and the other
///   types by the error number, with the full pathname of the entry concerned
NURA_FILESYSTEM_EXPORT void remove_all(path const& p);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void remove_all(std::u16string const& p);

/// @}
/// \defgroup renaming Rename
/// New names, and moves to another file system.
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
/// \code{.cpp}
/// nfs::rename(u"~/notes.txt.new", u"~/notes.txt");
/// nfs::rename(u"~/photos", u"/media/disk/photos", {true}); // with the modification times
/// \endcode
///
/// \par Errors
/// A source of 1,024 UTF-16 code units or more is the one that any failure names.
/// - `InvalidArgument` "Empty Path not permitted", no pathname, tested on the native forms
/// - `PathNotFound` with `from` if that is missing, else with `to`
/// - `FileExistsError`, `NotDirectoryError`, `FileIsDirectory`, `DirectoryNotEmpty`,
///   `FileNameTooLarge` with `to`
/// - `AccessDenied` with `from` if the directory that holds it is not writable, else with `to`
/// - `InvalidArgument` or `SystemError` with `from`, and `to` in `other_pathnames()`; error
///   number 0 says that the copy is complete and the source could not be removed
/// - `std::filesystem::filesystem_error` if times cannot be preserved; nothing is removed
NURA_FILESYSTEM_EXPORT void rename(path const& from, path const& to,
                                   rename_options const& options = {});
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void rename(std::u16string const& from, std::u16string const& to,
                                   rename_options const& options = {});

/// @}
/// \defgroup links Symbolic links
/// Links are made by way of `std::filesystem`: an unpaired surrogate throws `std::runtime_error`
/// "locale not supported" before anything is made, and no failure carries a pathname. They are
/// read by the system call, and there failures carry it.
/// @{

/// Creates the symbolic link `link` with the text `target`.
///
/// `type` chooses between a link to a directory (`file_status::directory_file`) and one to a
/// file; for any other value the target is looked at (`status`), relative to the current
/// directory. The string overload brings the target into native form as well. An empty
/// pathname on either side is the system's to refuse.
///
/// \code{.cpp}
/// nfs::create_symlink(u"notes-2024", u"notes"); // "notes" leads to "notes-2024" beside it
/// \endcode
///
/// \par Errors
/// None of them carries a pathname.
/// - `FileExistsError`, `PathNotFound` and the other types by the error number; also what
///   `status` throws for the target, before anything is made
/// - `std::runtime_error` "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void create_symlink(path const& target, path const& link,
                                           unsigned int type = file_status::file_type_auto);
/// The same for text; target and link are both brought into native form first.
NURA_FILESYSTEM_EXPORT void create_symlink(std::u16string const& target, std::u16string const& link,
                                           unsigned int type = file_status::file_type_auto);

/// Creates the symbolic link `new_link` with the text of `existing_link`.
///
/// \code{.cpp}
/// nfs::copy_symlink(u"notes", u"notes-again");
/// \endcode
///
/// \par Errors
/// None of them carries a pathname.
/// - `InvalidArgument` (not a link), `PathNotFound`, `FileExistsError` and the other types by
///   the error number
/// - `std::runtime_error` "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void copy_symlink(path const& existing_link, path const& new_link);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void copy_symlink(std::u16string const& existing_link,
                                         std::u16string const& new_link);

/// The text of the symbolic link `p` (`readlink`), whatever its length, as a path: in native form,
/// with a leading tilde expanded. A relative target stays relative to the link's directory. Empty
/// for the empty pathname.
///
/// \code{.cpp}
/// nfs::path const link{u"/etc/localtime"};
/// nfs::path const zone = nfs::read_symlink(link);
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` (not a link), `PathNotFound` and the other types by the error number,
///   with the pathname
[[nodiscard]] NURA_FILESYSTEM_EXPORT path read_symlink(path const& p);
/// The same for text, which is brought into native form first; the text of the link is returned
/// as it is stored.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string read_symlink(std::u16string const& p);

/// @}
/// \defgroup copying Copying
/// Files, links and trees by way of `std::filesystem`, single directories by way of
/// Boost.Filesystem.
/// @{

/// Copies a file, a directory or a link, by way of `std::filesystem::copy`, whose options and
/// rules hold. An empty pathname is the standard library's to refuse.
///
/// A single file whose copy is cut short fails with EIO. In a recursive copy the standard library
/// can take a cut file for a whole one (a disk that fills up): `rename` to another file system
/// looks at every entry, this does not.
///
/// \code{.cpp}
/// using options = std::filesystem::copy_options;
/// nfs::copy(u"~/notes", u"~/backup/notes", options::recursive | options::copy_symlinks);
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` with a text that begins with "Invalid combination selected", no pathname,
///   if options contradict one another
/// - for any other failure as `rename` within one file system, with the pathnames that it names
/// - `std::runtime_error` "locale not supported" if a surrogate is unpaired
NURA_FILESYSTEM_EXPORT void
copy(path const& from, path const& to,
     std::filesystem::copy_options options = std::filesystem::copy_options::none);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void
copy(std::u16string const& from, std::u16string const& to,
     std::filesystem::copy_options options = std::filesystem::copy_options::none);

/// Copies the contents and permissions of a regular file, by way of
/// `std::filesystem::copy_file`. Whether the options had it skipped is not reported. What says that
/// it is empty, as files in /proc do, comes out empty.
///
/// \code{.cpp}
/// nfs::copy_file(u"~/notes.txt", u"~/notes.bak",
///                std::filesystem::copy_options::overwrite_existing);
/// \endcode
///
/// \par Errors
/// Those of `copy`.
NURA_FILESYSTEM_EXPORT void
copy_file(path const& from, path const& to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void
copy_file(std::u16string const& from, std::u16string const& to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none);

/// Creates the directory `to` with the permissions of the directory `from`, less the umask; the
/// contents are not copied. An existing directory `to` is left as it is, without a failure.
///
/// \code{.cpp}
/// nfs::copy_directory(u"~/private", u"~/private-too"); // as closed as the first one
/// \endcode
///
/// \par Errors
/// The pathnames, but for the empty ones, are narrowed to the low byte of each unit and decoded
/// as UTF-8; outside ASCII they differ from the real ones.
/// - `InvalidArgument` "Empty Path not permitted", no pathname
/// - `PathNotFound` with `from` if that is missing, else with `to`
/// - `FileExistsError`, `FileNameTooLarge` with `to`; `FileIsDirectory` with `from`
/// - `AccessDenied` with `from` if that is not readable, else with `to`
/// - `NotDirectoryError`, `DirectoryNotEmpty` with `from`
/// - `InvalidArgument` or `SystemError` with `from`, and `to` in `other_pathnames()`
NURA_FILESYSTEM_EXPORT void copy_directory(path const& from, path const& to);
/// The same for text, which is brought into native form first.
NURA_FILESYSTEM_EXPORT void copy_directory(std::u16string const& from, std::u16string const& to);

/// @}
/// \defgroup resolution Resolution
/// An empty pathname gives an empty result. An empty base is the current directory.
/// @{

/// `p` behind `base`, without asking the file system: dot elements stay. The base is looked at
/// only where `p` is relative.
///
/// \code{.cpp}
/// std::u16string const log = nfs::absolute(u"editor.log", u"/var/log"); // /var/log/editor.log
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` "Invalid Base Path", no pathname, if the base is relative
/// - what `get_current_path` throws
[[nodiscard]] NURA_FILESYSTEM_EXPORT path absolute(path const& p, path const& base = {});
/// The same for text; pathname and base are both brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string absolute(std::u16string const& p,
                                                             std::u16string const& base = {});

/// The one name of what `p` names, free of links and dot elements (`realpath`), whatever its
/// length. The base is looked at only where `p` is relative. A tilde with which a path still
/// begins is expanded, too: write `./~`.
///
/// \code{.cpp}
/// std::u16string const real = nfs::canonical(u"/usr/../usr/bin/."); // /usr/bin
/// \endcode
///
/// \par Errors
/// - `PathNotFound` without a pathname if nothing has this name, and where `p` or the base has
///   no native name
/// - `InvalidArgument` "Invalid Base Path", no pathname, if the base is relative
/// - `AccessDenied`, `SystemError` (ELOOP) and the other types by the error number, with the
///   absolute pathname
/// - what `get_current_path` throws
[[nodiscard]] NURA_FILESYSTEM_EXPORT path canonical(path const& p, path const& base = {});
/// The same for text; pathname and base are both brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string canonical(std::u16string const& p,
                                                              std::u16string const& base = {});

/// The canonical form of the longest leading part of `p` that exists, with the rest behind it.
/// The rest is normalised only if "." or ".." is one of its elements. A relative `p` of which
/// nothing exists stays relative.
///
/// An element of the rest, or one that is reached on the way there, that begins with '~' is
/// expanded like a tail that is appended to a path; expanded to an absolute pathname it is
/// refused. What exists is resolved by `canonical`, which expands a tilde at the beginning.
///
/// \code{.cpp}
/// std::u16string const form = nfs::weakly_canonical(u"/usr/./new/file.txt"); // /usr/new/file.txt
/// \endcode
///
/// \par Errors
/// A missing file is none.
/// - `PathNotFound` without a pathname if what exists begins with a tilde that is part of its name
/// - `InvalidArgument` "Absolute path not permitted", no pathname, for an element that a tilde
///   makes absolute
/// - `AccessDenied`, `SystemError` (ELOOP) and the other types by the error number, with the
///   pathname
/// - what `get_current_path` throws, for a relative `p` of which something exists
[[nodiscard]] NURA_FILESYSTEM_EXPORT path weakly_canonical(path const& p);
/// The same for text, which is brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string weakly_canonical(std::u16string const& p);

/// The way to `p` from the directory `base`, by the weakly canonical forms of both: `../b/c`
/// from `/a/d` to `/a/b/c`. Empty where there is none, as from the current directory to a
/// relative `p` of which nothing exists. The base is resolved first, even if `p` is empty. Paths
/// are brought into native form like text: a tilde that is left in one is expanded.
///
/// \code{.cpp}
/// std::u16string const way = nfs::relative(u"/usr/lib", u"/usr/bin"); // ../lib, without links
/// \endcode
///
/// \par Errors
/// What `weakly_canonical` and `get_current_path` throw.
[[nodiscard]] NURA_FILESYSTEM_EXPORT path relative(path const& p, path const& base = {});
/// The same for text; pathname and base are both brought into native form first.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string relative(std::u16string const& p,
                                                             std::u16string const& base = {});

/// Whether two pathnames name the same file, symbolic links followed.
///
/// False if exactly one of them is empty or has no native name, and if the system finds a file
/// for one of them only: the other one may be missing, or not be reached.
///
/// \code{.cpp}
/// bool const same = nfs::equivalent(u"/etc/mtab", u"/proc/self/mounts");
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` "Empty Path not permitted", no pathname, if both are empty
/// - `PathNotFound` without a pathname if neither has a native name
/// - if the system finds a file for neither, the type by the error number of the first, with the
///   pathnames that `copy_directory` names, narrowed to the low byte of each unit
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool equivalent(path const& p1, path const& p2);
/// The same for text, which is used as given: no native form, no tilde.
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool equivalent(std::u16string const& p1,
                                                     std::u16string const& p2);

/// @}
/// \defgroup space Space, network names and shortcuts
/// The room on a file system, and what exists for the sake of other systems.
/// @{

/// `capacity`, `free` and `available` bytes of a file system, as Boost.Filesystem counts them.
using space_info = boost::filesystem::space_info;

/// How much room the file system that holds `p` has (`statvfs`). There is no string overload.
///
/// \code{.cpp}
/// bool const room = nfs::space(nfs::path{u"~"}).available > 10'000'000;
/// \endcode
///
/// \par Errors
/// - `InvalidArgument` "Empty Path not permitted", no pathname
/// - `PathNotFound`, `AccessDenied` and the other types by the error number, with the pathname
///   narrowed to the low byte of each unit and decoded as UTF-8
[[nodiscard]] NURA_FILESYSTEM_EXPORT space_info space(path const& p);

/// The network name of `p`, which on POSIX systems is `p` itself after a round trip through its
/// native name; `flag` is ignored. Empty for the empty pathname and where the round trip fails. The
/// answer for a path is made into a path: a tilde with which it begins is expanded then.
///
/// \code{.cpp}
/// std::u16string const name = nfs::get_unc_path(u"/srv/share", false); // /srv/share
/// \endcode
///
/// \par Errors
/// None.
[[nodiscard]] NURA_FILESYSTEM_EXPORT path get_unc_path(path const& p, bool flag);
/// The same for text, which is used as given: no native form, no tilde.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string get_unc_path(std::u16string const& p,
                                                                 bool flag);

/// Shortcuts do not exist on POSIX systems: nothing is created.
///
/// \code{.cpp}
/// try {
///     nfs::create_shortcut(u"notes.txt", u"shortcut");
/// } catch (nfs::InvalidOperation const&) {
///     nfs::create_symlink(u"notes.txt", u"shortcut");
/// }
/// \endcode
///
/// \par Errors
/// - `InvalidOperation`, always, without a pathname
NURA_FILESYSTEM_EXPORT void create_shortcut(path const& target, path const& shortcut);
/// The same for text.
NURA_FILESYSTEM_EXPORT void create_shortcut(std::u16string const& target,
                                            std::u16string const& shortcut);

/// @}

} // namespace nura::filesystem
