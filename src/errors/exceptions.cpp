#include <filesystem/exceptions.hpp>

#include "native/unit_escape.hpp"

namespace nura::filesystem {

FsysExceptionBase::FsysExceptionBase(char const* message_id, unsigned kind,
                                     std::u16string const& pathname,
                                     std::vector<std::u16string> const& other_pathnames,
                                     int error_number)
    : message_id_{message_id}, kind_{kind}, pathname_{pathname}, other_pathnames_{other_pathnames},
      error_number_{error_number}
{
}

char const* FsysExceptionBase::what() const noexcept
{
    return message_id_.c_str();
}

InvalidArgument::InvalidArgument(std::string const& text, std::u16string const& pathname,
                                 std::vector<std::u16string> const& other_pathnames)
    : FsysExceptionBase{"nura:filesystem:InvalidArgument", 1, pathname, other_pathnames, 0},
      text_{text}
{
}

char const* InvalidArgument::what() const noexcept
{
    what_buffer_ = message_id();
    if (!text_.empty()) {
        what_buffer_ += ": ";
        what_buffer_ += text_;
    }
    if (!pathname().empty()) {
        what_buffer_ += ": {";
        what_buffer_ += printHelper(pathname());
        what_buffer_ += '}';
    }
    return what_buffer_.c_str();
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a settled signature
std::string InvalidArgument::printHelper(std::u16string const& s) const noexcept
{
    std::string printed;
    for (char16_t const unit : s) {
        // U+007F stays as it is, unlike in `path::display`.
        if (unit < 0x20 || unit >= 0x80) {
            detail::append_escaped(printed, unit);
        } else {
            printed += static_cast<char>(unit);
        }
    }
    return printed;
}

InvalidOperation::InvalidOperation()
    : FsysExceptionBase{"nura:filesystem:InvalidOperation", 2, {}, {}, 0}
{
}

FileNameTooLarge::FileNameTooLarge(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:FileNameTooLarge", 3, pathname, {}, 0}
{
}

AccessDenied::AccessDenied(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:AccessDenied", 6, pathname, {}, 0}
{
}

PathNotFound::PathNotFound(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:PathNotFound", 7, pathname, {}, 0}
{
}

NotDirectoryError::NotDirectoryError(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:NotDirectoryError", 8, pathname, {}, 0}
{
}

DirectoryNotEmpty::DirectoryNotEmpty(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:DirectoryNotEmpty", 9, pathname, {}, 0}
{
}

FileIsDirectory::FileIsDirectory(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:FileIsDirectory", 10, pathname, {}, 0}
{
}

FileExistsError::FileExistsError(std::u16string const& pathname)
    : FsysExceptionBase{"nura:filesystem:FileExistsError", 11, pathname, {}, 0}
{
}

SystemError::SystemError(std::u16string const& pathname,
                         std::vector<std::u16string> const& other_pathnames, int error_number)
    : FsysExceptionBase{"nura:filesystem:SystemError", 13, pathname, other_pathnames, error_number}
{
}

// Destructors stand here so that vtables and type information live in the library, once.
FsysExceptionBase::~FsysExceptionBase() = default;
InvalidArgument::~InvalidArgument() = default;
InvalidOperation::~InvalidOperation() = default;
FileNameTooLarge::~FileNameTooLarge() = default;
AccessDenied::~AccessDenied() = default;
PathNotFound::~PathNotFound() = default;
NotDirectoryError::~NotDirectoryError() = default;
DirectoryNotEmpty::~DirectoryNotEmpty() = default;
FileIsDirectory::~FileIsDirectory() = default;
FileExistsError::~FileExistsError() = default;
SystemError::~SystemError() = default;

} // namespace nura::filesystem
