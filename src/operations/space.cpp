#include "errors/raise.hpp"
#include "operations/failure_attribution.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

namespace nura::filesystem {

space_info space(path const& p)
{
    if (p.empty()) {
        detail::raise_empty_path();
    }
    std::string const native = detail::make_native_access_form(p.pathname());
    boost::system::error_code error = detail::boost_refusal_of(native);
    space_info const counts = error ? space_info{} : boost::filesystem::space(native, error);
    detail::raise_for_boost_error(error, p.pathname(), {});
    return counts;
}

} // namespace nura::filesystem
