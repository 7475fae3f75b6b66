#include "errors/raise.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>
#include <filesystem/pathname_traits.hpp>

/// Operations that mean something on another kind of system only.
namespace nura::filesystem {

path get_unc_path(path const& p, bool flag)
{
    return path{get_unc_path(p.pathname(), flag)};
}

std::u16string get_unc_path(std::u16string const& p, bool /*flag*/)
{
    return pathname_traits<char16_t>::from_filesystem(detail::make_native_access_form(p));
}

void create_shortcut(path const& target, path const& shortcut)
{
    create_shortcut(target.pathname(), shortcut.pathname());
}

void create_shortcut(std::u16string const& target, std::u16string const& shortcut)
{
    // Converted first: running out of memory is reported before the refusal.
    static_cast<void>(detail::make_native_access_form(target));
    static_cast<void>(detail::make_native_access_form(shortcut));
    detail::throw_invalid_operation_exception();
}

} // namespace nura::filesystem
