#include "errors/raise.hpp"
#include "operations/failure_attribution.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

namespace nura::filesystem {

bool equivalent(path const& p1, path const& p2)
{
    return equivalent(p1.pathname(), p2.pathname());
}

// The arguments are taken as given: no native form, unlike in other string overloads.
bool equivalent(std::u16string const& p1, std::u16string const& p2)
{
    if (p1.empty() && p2.empty()) {
        detail::raise_empty_path();
    }
    if (p1.empty() || p2.empty()) {
        return false;
    }
    std::string const first = detail::make_native_access_form(p1);
    std::string const second = detail::make_native_access_form(p2);
    if (first.empty() && second.empty()) {
        detail::raise(PathNotFound{{}});
    }
    if (first.empty() || second.empty()) {
        return false;
    }
    boost::system::error_code error = detail::boost_refusal_of(first, second);
    bool const same = !error && boost::filesystem::equivalent(first, second, error);
    detail::raise_for_boost_path_pair(error, p1, p2);
    return same;
}

} // namespace nura::filesystem
