#include "errors/raise.hpp"
#include "native/system_call.hpp"
#include "operations/device_move.hpp"
#include "operations/failure_attribution.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <cerrno>
#include <cstdio>

namespace nura::filesystem {

void rename(path const& from, path const& to, rename_options const& options)
{
    if (from.empty() || to.empty()) {
        detail::raise_empty_path();
    }
    std::string const source = detail::make_native_access_form(from.pathname());
    std::string const target = detail::make_native_access_form(to.pathname());
    if (posix::detail::call_on(source, target, ::rename) == 0) {
        return;
    }
    int const error = errno;
    if (error == 0) {
        return; // a failure without a number counts as none
    }
    if (error != EXDEV) {
        detail::raise_for_path_pair(error, source, target);
    }
    detail::move_across_devices(source, target, options.preserve_last_write_time);
}

void rename(std::u16string const& from, std::u16string const& to, rename_options const& options)
{
    rename(path{from}, path{to}, options);
}

} // namespace nura::filesystem
