#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <boost/filesystem/path.hpp>

namespace nura::filesystem {

path relative(path const& p, path const& base)
{
    return path{relative(p.pathname(), base.pathname())};
}

std::u16string relative(std::u16string const& p, std::u16string const& base)
{
    // The base comes first, so that what is wrong with it is reported even for an empty `p`.
    boost::filesystem::path const start{detail::make_native_access_form(
        weakly_canonical(base.empty() ? get_current_path() : base))};
    boost::filesystem::path const target{detail::make_native_access_form(weakly_canonical(p))};
    return detail::from_filesystem(target.lexically_relative(start).native());
}

} // namespace nura::filesystem
