#pragma once

/// \file
/// `path` in the format strings of {fmt}, for those who use that library. `filesystem.hpp` does
/// not include this header, and the shared library knows nothing of it.
///
/// `{}` prints `path::display()`, with fill, alignment, width and precision as for text. `{:?}`
/// prints it in double quotes, with a backslash before the quotes and backslashes of the name, so
/// that no two names print alike: `\u000A` is a line feed, `\\u000A` six units. Link `fmt::fmt`
/// or `fmt::fmt-header-only` besides `nura::filesystem`; Debian's package is `libfmt-dev`.
///
/// \code
/// fmt::print("{:<20}|{:?}\n", p, p);
/// \endcode

#include "basic_path.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

template <>
struct fmt::formatter<nura::filesystem::path> : fmt::formatter<fmt::string_view> {
    FMT_CONSTEXPR auto parse(fmt::format_parse_context& context) -> decltype(context.begin())
    {
        auto const* begin = context.begin();
        quoted_ = begin != context.end() && *begin == '?';
        if (quoted_) {
            return ++begin;
        }
        return fmt::formatter<fmt::string_view>::parse(context);
    }

    /// Quotes from now on, or no more: what {fmt} calls for the elements of ranges.
    constexpr void set_debug_format(bool set = true) { quoted_ = set; }

    template <class Context>
    auto format(nura::filesystem::path const& p, Context& context) const -> decltype(context.out())
    {
        if (!quoted_) {
            return fmt::formatter<fmt::string_view>::format(p.display(), context);
        }
        auto out = context.out();
        *out++ = '"';
        for (std::u16string_view rest = p.pathname(); !rest.empty();) {
            std::size_t const end = std::min(rest.find_first_of(u"\"\\"), rest.size());
            out = fmt::format_to(out, "{}", nura::filesystem::path::display(rest.substr(0, end)));
            rest.remove_prefix(end);
            if (!rest.empty()) {
                *out++ = '\\';
                *out++ = static_cast<char>(rest.front());
                rest.remove_prefix(1);
            }
        }
        *out++ = '"';
        return out;
    }

private:
    bool quoted_ = false;
};
