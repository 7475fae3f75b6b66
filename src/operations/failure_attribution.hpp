#pragma once

#include "native/system_call.hpp"

#include <filesystem/basic_path.hpp>

#include <boost/system/error_code.hpp>

#include <filesystem>
#include <string>
#include <system_error>

/// Which pathname a failure names. All the rules are here; the system says only what failed.
namespace nura::filesystem::detail {

/// Throws for an error of the standard library; returns if there is none. A null pointer is a
/// pathname that is not to be named, which differs from an empty one: two paths, even empty,
/// go through `raise_for_path_pair`.
void raise_for_error_code(std::error_code const& error, path const* first, path const* second);

/// Throws for the failed move or copy of `first` to `second`, both native names.
[[noreturn]] void raise_for_path_pair(int error, std::string const& first,
                                      std::string const& second);

/// Throws for an error of Boost.Filesystem on `from` and `to`; returns if there is none. Unlike
/// `raise_for_path_pair` it asks whether the source is readable, names the source for EISDIR,
/// and both for ENOTDIR and ENOTEMPTY. The exception carries low bytes (`raise_for_boost_error`).
void raise_for_boost_path_pair(boost::system::error_code const& error, std::u16string const& from,
                               std::u16string const& to);

/// EINVAL if one of `names` holds U+0000, else no error: the standard library would hand the
/// system a name that is cut short.
template <class... Paths>
std::error_code refusal_of(Paths const&... names)
{
    bool const refused = (posix::detail::holds_nul(names.native()) || ...);
    return refused ? std::make_error_code(std::errc::invalid_argument) : std::error_code{};
}

/// EINVAL if one of the native `names` holds U+0000, else no error: Boost.Filesystem would hand
/// the system a name that is cut short.
template <class... Names>
boost::system::error_code boost_refusal_of(Names const&... names)
{
    bool const refused = (posix::detail::holds_nul(names) || ...);
    return refused ? boost::system::errc::make_error_code(boost::system::errc::invalid_argument)
                   : boost::system::error_code{};
}

/// Throws for an error of Boost.Filesystem; returns if there is none. The exception carries the
/// pathnames narrowed to the low byte of each unit: users of these operations rely on it.
void raise_for_boost_error(boost::system::error_code const& error, std::u16string const& first,
                           std::u16string const& second);

} // namespace nura::filesystem::detail
