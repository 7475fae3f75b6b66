#include "native/current_directory.hpp"

#include "errors/error_translation.hpp"
#include "native/handles.hpp"
#include "native/system_call.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <mutex>

namespace nura::filesystem {

namespace detail {

namespace {

std::mutex& bare_cwd_mutex()
{
    static std::mutex mutex;
    return mutex;
}

/// The lock of the process around its current directory. It is free in a forked child, whatever
/// the other threads of the parent were doing.
std::mutex& cwd_mutex()
{
    static int const registered =
        ::pthread_atfork([] { bare_cwd_mutex().lock(); }, [] { bare_cwd_mutex().unlock(); },
                         [] { bare_cwd_mutex().unlock(); });
    static_cast<void>(registered); // fails for want of memory only; fork is then as without it
    return bare_cwd_mutex();
}

} // namespace

bool set_cwd_mt(std::string const& native)
{
    std::lock_guard const lock{cwd_mutex()};
    if (posix::detail::call_on(native, ::chdir) != 0) {
        int const error = errno;
        throw_errno_exception(error, native, {});
    }
    return true;
}

std::string get_cwd_mt()
{
    std::lock_guard const lock{cwd_mutex()};
    std::array<char, 1024> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): output only
    if (::getcwd(buffer.data(), buffer.size()) != nullptr) {
        return buffer.data();
    }
    int error = errno;
    if (error == ERANGE) {
        posix::detail::allocated_text const name{::getcwd(nullptr, 0)};
        if (name != nullptr) {
            return name.get();
        }
        error = errno;
    }
    throw_errno_exception(error, {}, {});
}

} // namespace detail

std::u16string get_current_path()
{
    return detail::make_native_form(
        pathname_traits<char16_t>::from_filesystem(detail::get_cwd_mt()), true);
}

bool change_current_path(path const& p)
{
    return !p.empty() && detail::set_cwd_mt(detail::make_native_access_form(p.pathname()));
}

bool change_current_path(std::u16string const& p)
{
    // Only the pathname as given is tested: one whose native form is empty fails in the system.
    return !p.empty() && detail::set_cwd_mt(detail::make_native_access_form_with_cleanup(p));
}

} // namespace nura::filesystem
