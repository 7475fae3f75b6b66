#pragma once

#include <cerrno>
#include <string>

namespace nura::filesystem::posix::detail {

inline bool holds_nul(std::string const& name) noexcept
{
    return name.find('\0') != std::string::npos;
}

/// Calls the system function `call` on `name`. A name that holds U+0000 is never cut short: it
/// fails as if the system had answered EINVAL.
template <class Call, class... Arguments>
int call_on(std::string const& name, Call call, Arguments... arguments)
{
    if (holds_nul(name)) {
        errno = EINVAL;
        return -1;
    }
    return call(name.c_str(), arguments...);
}

} // namespace nura::filesystem::posix::detail
