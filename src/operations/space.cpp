#include "errors/raise.hpp"
#include "native/system_call.hpp"
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
    boost::system::error_code error;
    space_info counts{};
    if (posix::detail::holds_nul(native)) {
        error = boost::system::errc::make_error_code(boost::system::errc::invalid_argument);
    } else {
        counts = boost::filesystem::space(native, error);
    }
    detail::raise_for_boost_error(error, p.pathname(), {});
    return counts;
}

} // namespace nura::filesystem
