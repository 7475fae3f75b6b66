#pragma once

#include "pathname/grammar.hpp"

#include <string>
#include <utility>

namespace nura::filesystem::detail {

/// Hands `p` in native form, tilde expanded, to `work`: what the string overload of every
/// operation does. No copy is made of a pathname that is in native form already.
template <class Work>
decltype(auto) with_native_form(std::u16string const& p, Work&& work)
{
    if (grammar::is_native_form(std::u16string_view{p}, true)) {
        return std::forward<Work>(work)(p);
    }
    return std::forward<Work>(work)(grammar::native_form(std::u16string_view{p}, true));
}

} // namespace nura::filesystem::detail
