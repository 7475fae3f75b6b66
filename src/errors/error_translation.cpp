#include "errors/error_translation.hpp"

#include "errors/raise.hpp"

#include <filesystem/pathname_traits.hpp>

#include <cerrno>
#include <vector>

namespace nura::filesystem::detail {

void throw_errno_exception(int error, std::string const& first, std::string const& second)
{
    std::u16string const pathname = native_name_for_exception(first);
    std::vector<std::u16string> const others{second.empty() ? std::u16string{}
                                                            : native_name_for_exception(second)};
    switch (error) {
    case ENOENT:
        raise(PathNotFound{pathname});
    case EACCES:
        raise(AccessDenied{pathname});
    case EEXIST:
        raise(FileExistsError{pathname});
    case ENOTDIR:
        raise(NotDirectoryError{pathname});
    case EISDIR:
        raise(FileIsDirectory{pathname});
    case ENAMETOOLONG:
        raise(FileNameTooLarge{pathname});
    case ENOTEMPTY:
        raise(DirectoryNotEmpty{pathname});
    case EINVAL:
    case ENOTSUP: // the same number as EOPNOTSUPP
        raise(InvalidArgument{{}, pathname, others});
    default:
        raise(SystemError{pathname, others, error});
    }
}

std::u16string native_name_for_exception(std::string const& native)
{
    try {
        return pathname_traits<char16_t>::from_filesystem(native);
    } catch (...) {
        // The failure must still be raised: bytes are sign-extended one by one, so that ASCII
        // stays readable.
        std::u16string widened;
        for (char const byte : native) {
            widened += static_cast<char16_t>(static_cast<signed char>(byte));
        }
        return widened;
    }
}

} // namespace nura::filesystem::detail
