#pragma once

#include "native/system_call.hpp"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace nura::filesystem::detail {

/// The standard path of the same name as `pathname`, by the standard library's own code
/// conversion.
///
/// \throws std::runtime_error "locale not supported" for text that is no UTF-16
std::filesystem::path to_standard_path(std::u16string_view pathname);

/// EINVAL if one of `names` holds U+0000, else no error: the standard library would hand the
/// system a name that is cut short.
template <class... Paths>
std::error_code refusal_of(Paths const&... names)
{
    bool const refused = (posix::detail::holds_nul(names.native()) || ...);
    return refused ? std::make_error_code(std::errc::invalid_argument) : std::error_code{};
}

} // namespace nura::filesystem::detail
