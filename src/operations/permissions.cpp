#include "operations/permissions.hpp"
#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "native/system_call.hpp"
#include "operations/status.hpp"
#include "operations/string_overload.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace nura::filesystem {

namespace detail {

namespace {

mode_t new_mode(unsigned perms, unsigned current)
{
    unsigned const bits = perms & file_status::perms_mask & ~file_status::file_type_mask;
    if ((perms & file_status::perms_add) != 0) {
        return bits | current;
    }
    if ((perms & file_status::perms_remove) != 0) {
        return ~bits & current;
    }
    return bits;
}

/// Changes a link itself. Linux has no `lchmod`; this is what stands for it, and it refuses
/// links with ENOTSUP.
int change_link_mode(char const* name, mode_t mode)
{
    return ::fchmodat(AT_FDCWD, name, mode, AT_SYMLINK_NOFOLLOW);
}

} // namespace

void native_permissions(std::string const& native, unsigned perms)
{
    bool const means_links = (perms & file_status::perms_symlink) != 0;
    file_status const found =
        make_file_status(means_links ? bind_lstat(native) : bind_stat(native));
    bool const is_link = (found.type() & file_status::file_type_mask) == file_status::symlink_file;
    mode_t const mode = new_mode(perms, found.permissions());
    int const outcome =
        posix::detail::call_on(native, means_links && is_link ? change_link_mode : ::chmod, mode);
    if (outcome != 0) {
        int const error = errno;
        throw_errno_exception(error, {}, {}); // this operation names no file
    }
}

} // namespace detail

namespace {

void permissions_at(std::u16string const& p, unsigned perms)
{
    if (p.empty()) {
        detail::raise_empty_path();
    }
    constexpr unsigned add_and_remove = file_status::perms_add | file_status::perms_remove;
    if ((perms & add_and_remove) == add_and_remove ||
        (perms & file_status::perms_unknown) == file_status::perms_unknown) {
        detail::raise_invalid_argument("File Permission not valid");
    }
    detail::native_permissions(detail::make_native_access_form(p), perms);
}

} // namespace

void permissions(path const& p, unsigned int perms)
{
    permissions_at(p.pathname(), perms);
}

void permissions(std::u16string const& p, unsigned int perms)
{
    detail::with_native_form(p,
                             [perms](std::u16string const& form) { permissions_at(form, perms); });
}

} // namespace nura::filesystem
