#pragma once

/// \file
/// The exceptions through which the library reports every failure: one type for each kind.
///
/// Each is thrown in a wrapper of Boost.Exception that derives from the type named here, so
/// that `boost::current_exception` carries it to another thread with its type intact; catch it
/// as the type, as `FsysExceptionBase` or as `std::exception`.
///
/// \code{.cpp}
/// try {
///     nfs::remove_file(u"/var/spool/job");
/// } catch (nfs::AccessDenied const& e) {
///     std::cerr << "only its owner may do that: " << nfs::path::display(e.pathname()) << '\n';
/// } catch (nfs::FsysExceptionBase const& e) {
///     std::cerr << nfs::describe(e) << '\n';
/// }
/// \endcode

#include "export.hpp"

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace nura::filesystem {

/// What all exceptions of the library have in common.
class NURA_FILESYSTEM_EXPORT FsysExceptionBase : public std::exception {
public:
    FsysExceptionBase(FsysExceptionBase const&) = default;
    FsysExceptionBase& operator=(FsysExceptionBase const&) = default;
    ~FsysExceptionBase() override = 0;

    /// The text of `message_id()`; no pathname is ever part of it, except in
    /// `InvalidArgument::what`.
    [[nodiscard]] char const* what() const noexcept override;

    /// "nura:filesystem:" and the name of the type: the key of a message catalogue.
    [[nodiscard]] std::string const& message_id() const noexcept { return message_id_; }

    /// The code of the type. The codes 0, 4, 5 and 12 are not assigned.
    [[nodiscard]] std::uint32_t kind() const noexcept { return kind_; }

    /// The pathname that the failure concerns; empty when none is known.
    [[nodiscard]] std::u16string const& pathname() const noexcept { return pathname_; }

    /// Further pathnames, such as the target of a move; may be empty, and may hold an empty
    /// string.
    [[nodiscard]] std::vector<std::u16string> const& other_pathnames() const noexcept
    {
        return other_pathnames_;
    }

    /// The `errno` value of the failing call for `SystemError`, 0 for every other type.
    [[nodiscard]] std::int32_t error_number() const noexcept { return error_number_; }

protected:
    FsysExceptionBase(char const* message_id, unsigned kind, std::u16string const& pathname,
                      std::vector<std::u16string> const& other_pathnames, int error_number);

private:
    std::string message_id_;
    std::uint32_t kind_;
    std::u16string pathname_;
    std::vector<std::u16string> other_pathnames_;
    std::int32_t error_number_;
};

/// An argument that the operation, or the system (EINVAL, ENOTSUP), does not accept. Kind 1.
class NURA_FILESYSTEM_EXPORT InvalidArgument : public FsysExceptionBase {
public:
    InvalidArgument(std::string const& text, std::u16string const& pathname,
                    std::vector<std::u16string> const& other_pathnames);
    InvalidArgument(InvalidArgument const&) = default;
    InvalidArgument& operator=(InvalidArgument const&) = default;
    ~InvalidArgument() override;

    /// The identifier, then ": " and `text()` unless that is empty, then ": {", the pathname
    /// as `printHelper` writes it, and "}" unless that is empty.
    ///
    /// The text is made anew by each call and lives until the next one: two threads must not
    /// call it on one object at once.
    [[nodiscard]] char const* what() const noexcept override;

    /// What is wrong, such as "Empty Path not permitted"; empty when the system refused.
    [[nodiscard]] std::string const& text() const noexcept { return text_; }

    /// `s` in ASCII: each unit below U+0020 or above U+007F becomes `\u` and four upper-case
    /// hexadecimal digits; the halves of a surrogate pair are written one by one. Running out
    /// of memory terminates the process, as `what` has no way to report it.
    [[nodiscard]] std::string printHelper(std::u16string const& s) const noexcept;

private:
    std::string mutable what_buffer_;
    std::string text_;
};

/// The operation is not available on this system. Kind 2; no pathname.
class NURA_FILESYSTEM_EXPORT InvalidOperation : public FsysExceptionBase {
public:
    InvalidOperation();
    InvalidOperation(InvalidOperation const&) = default;
    InvalidOperation& operator=(InvalidOperation const&) = default;
    ~InvalidOperation() override;
};

/// A pathname, or an element of one, is too long for the system (ENAMETOOLONG). Kind 3.
class NURA_FILESYSTEM_EXPORT FileNameTooLarge : public FsysExceptionBase {
public:
    explicit FileNameTooLarge(std::u16string const& pathname);
    FileNameTooLarge(FileNameTooLarge const&) = default;
    FileNameTooLarge& operator=(FileNameTooLarge const&) = default;
    ~FileNameTooLarge() override;
};

/// Permissions forbid the operation (EACCES). Kind 6.
class NURA_FILESYSTEM_EXPORT AccessDenied : public FsysExceptionBase {
public:
    explicit AccessDenied(std::u16string const& pathname);
    AccessDenied(AccessDenied const&) = default;
    AccessDenied& operator=(AccessDenied const&) = default;
    ~AccessDenied() override;
};

/// Nothing has this name (ENOENT). Kind 7.
class NURA_FILESYSTEM_EXPORT PathNotFound : public FsysExceptionBase {
public:
    explicit PathNotFound(std::u16string const& pathname);
    PathNotFound(PathNotFound const&) = default;
    PathNotFound& operator=(PathNotFound const&) = default;
    ~PathNotFound() override;
};

/// A directory is needed where something else stands (ENOTDIR). Kind 8.
class NURA_FILESYSTEM_EXPORT NotDirectoryError : public FsysExceptionBase {
public:
    explicit NotDirectoryError(std::u16string const& pathname);
    NotDirectoryError(NotDirectoryError const&) = default;
    NotDirectoryError& operator=(NotDirectoryError const&) = default;
    ~NotDirectoryError() override;
};

/// A directory must be empty and is not (ENOTEMPTY). Kind 9.
class NURA_FILESYSTEM_EXPORT DirectoryNotEmpty : public FsysExceptionBase {
public:
    explicit DirectoryNotEmpty(std::u16string const& pathname);
    DirectoryNotEmpty(DirectoryNotEmpty const&) = default;
    DirectoryNotEmpty& operator=(DirectoryNotEmpty const&) = default;
    ~DirectoryNotEmpty() override;
};

/// A directory stands where something else is needed (EISDIR). Kind 10.
class NURA_FILESYSTEM_EXPORT FileIsDirectory : public FsysExceptionBase {
public:
    explicit FileIsDirectory(std::u16string const& pathname);
    FileIsDirectory(FileIsDirectory const&) = default;
    FileIsDirectory& operator=(FileIsDirectory const&) = default;
    ~FileIsDirectory() override;
};

/// The name is taken (EEXIST). Kind 11.
class NURA_FILESYSTEM_EXPORT FileExistsError : public FsysExceptionBase {
public:
    explicit FileExistsError(std::u16string const& pathname);
    FileExistsError(FileExistsError const&) = default;
    FileExistsError& operator=(FileExistsError const&) = default;
    ~FileExistsError() override;
};

/// Every other failure of a system call, with its number. Kind 13.
class NURA_FILESYSTEM_EXPORT SystemError : public FsysExceptionBase {
public:
    SystemError(std::u16string const& pathname, std::vector<std::u16string> const& other_pathnames,
                int error_number);
    SystemError(SystemError const&) = default;
    SystemError& operator=(SystemError const&) = default;
    ~SystemError() override;
};

} // namespace nura::filesystem
