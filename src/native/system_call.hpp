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
auto call_on(std::string const& name, Call call, Arguments... arguments)
    -> decltype(call(name.c_str(), arguments...))
{
    if (holds_nul(name)) {
        errno = EINVAL;
        return -1;
    }
    return call(name.c_str(), arguments...);
}

/// The same for a system function of two names.
template <class Call>
int call_on(std::string const& first, std::string const& second, Call call)
{
    if (holds_nul(first) || holds_nul(second)) {
        errno = EINVAL;
        return -1;
    }
    return call(first.c_str(), second.c_str());
}

} // namespace nura::filesystem::posix::detail
