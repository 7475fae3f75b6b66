#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "native/standard_path.hpp"
#include "native/system_call.hpp"
#include "operations/failure_attribution.hpp"
#include "operations/tree_removal.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <unistd.h>

#include <cerrno>

namespace nura::filesystem {

namespace {

/// Hands the native name of `p` to `removal`; nothing happens for the empty pathname.
void remove_by(void (*removal)(std::string const&), path const& p)
{
    if (!p.empty()) {
        removal(detail::make_native_access_form(p.pathname()));
    }
}

void unlink_name(std::string const& native)
{
    if (posix::detail::call_on(native, ::unlink) != 0) {
        int const error = errno;
        // Systems answer EPERM when asked to unlink a directory; whatever else caused it is
        // reported as that, too.
        detail::throw_errno_exception(error == EPERM ? EISDIR : error, native, {});
    }
}

void rmdir_name(std::string const& native)
{
    if (posix::detail::call_on(native, ::rmdir) != 0) {
        int const error = errno;
        detail::throw_errno_exception(error, native, {});
    }
}

} // namespace

void remove(path const& p)
{
    std::filesystem::path const name = detail::to_standard_path(p.pathname());
    std::error_code error = detail::refusal_of(name);
    if ((!error && std::filesystem::remove(name, error)) || p.empty()) {
        return;
    }
    detail::raise_for_error_code(error, &p, nullptr);
    detail::raise(PathNotFound{p.pathname()});
}

void remove(std::u16string const& p)
{
    remove(path{p});
}

void remove(path const& p, unsigned int flags)
{
    // Compared as a whole: a value with further bits means a file.
    remove_by(flags == file_status::directory_file ? rmdir_name : unlink_name, p);
}

void remove(std::u16string const& p, unsigned int flags)
{
    remove(path{p}, flags);
}

void remove_file(path const& p)
{
    remove_by(unlink_name, p);
}

void remove_file(std::u16string const& p)
{
    remove_file(path{p});
}

void remove_symlink(path const& p)
{
    remove_by(unlink_name, p);
}

void remove_symlink(std::u16string const& p)
{
    remove_symlink(path{p});
}

void remove_directory(path const& p)
{
    remove_by(rmdir_name, p);
}

void remove_directory(std::u16string const& p)
{
    remove_directory(path{p});
}

void remove_all(path const& p)
{
    remove_by(detail::remove_tree, p);
}

void remove_all(std::u16string const& p)
{
    remove_all(path{p});
}

} // namespace nura::filesystem
