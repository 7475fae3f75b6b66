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

} // namespace nura::filesystem
