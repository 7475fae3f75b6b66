#include "operations/access.hpp"

#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "native/system_call.hpp"
#include "operations/string_overload.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace nura::filesystem {

namespace detail {

namespace {

int system_mode(unsigned mode)
{
    return ((mode & access_read) != 0 ? R_OK : 0) | ((mode & access_write) != 0 ? W_OK : 0) |
           ((mode & access_execute) != 0 ? X_OK : 0);
}

bool can_stat(std::string const& native)
{
    struct stat found {};
    return posix::detail::call_on(native, ::stat, &found) == 0;
}

} // namespace

bool native_access(std::string const& native, unsigned mode)
{
    if (posix::detail::call_on(native, ::access, system_mode(mode)) == 0) {
        return true;
    }
    int const error = errno;
    if (error == EACCES && ((mode & access_exists) == 0 || can_stat(native))) {
        return false;
    }
    if (error == EROFS && (mode & access_write) != 0) {
        return false;
    }
    throw_errno_exception(error, native, {});
}

} // namespace detail

namespace {

constexpr unsigned all_modes = access_exists | access_read | access_write | access_execute;

bool access_at(std::u16string const& p, unsigned mode)
{
    if (p.empty()) {
        detail::raise_empty_path();
    }
    if (mode == 0 || mode > all_modes) {
        detail::raise_invalid_argument("Unsupported Access Mode");
    }
    std::string const native = detail::make_native_access_form(p);
    bool const asks_for_existence = (mode & access_exists) != 0;
    try {
        return detail::native_access(native, mode);
    } catch (PathNotFound const&) {
        if (asks_for_existence) {
            return false;
        }
        throw;
    } catch (AccessDenied const&) {
        if (asks_for_existence) {
            throw; // the file cannot be reached: whether it exists stays open
        }
        return false;
    }
}

} // namespace

bool access(path const& p, unsigned int mode)
{
    return access_at(p.pathname(), mode);
}

bool access(std::u16string const& p, unsigned int mode)
{
    return detail::with_native_form(
        p, [mode](std::u16string const& form) { return access_at(form, mode); });
}

} // namespace nura::filesystem
