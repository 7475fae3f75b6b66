#include "operations/absolute.hpp"

#include "errors/raise.hpp"
#include "native/current_directory.hpp"
#include "pathname/grammar.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/path_traits.hpp>
#include <filesystem/pathname_grammar.hpp>

namespace nura::filesystem {

namespace {

/// `p` behind `base`, or behind what `current_directory` answers if `base` is empty.
template <class Char, class Ask>
std::basic_string<Char> behind(std::basic_string<Char> const& p,
                               std::basic_string<Char> const& base, Ask current_directory)
{
    namespace grammar = detail::grammar;
    using view = std::basic_string_view<Char>;
    if (grammar::is_absolute(view{p})) {
        return p;
    }
    if (!base.empty() && !grammar::is_absolute(view{base})) {
        detail::raise_invalid_argument("Invalid Base Path");
    }
    std::basic_string<Char> whole = base.empty() ? current_directory() : base;
    if (whole.empty() || whole.back() != grammar::separator<Char>) {
        whole += grammar::separator<Char>;
    }
    return whole += p;
}

} // namespace

namespace detail {

std::string native_absolute(std::string const& native, std::string const& base)
{
    return behind(native, base,
                  [] { return path_traits<char, char>::make_native_form(get_cwd_mt(), true); });
}

} // namespace detail

path absolute(path const& p, path const& base)
{
    // This overload alone brings the result into native form.
    return p.empty() ? path{} : path{behind(p.pathname(), base.pathname(), get_current_path)};
}

std::u16string absolute(std::u16string const& p, std::u16string const& base)
{
    std::u16string const form = detail::make_native_form(p, true);
    return form.empty() ? form
                        : behind(form, detail::make_native_form(base, true), get_current_path);
}

} // namespace nura::filesystem
