#pragma once

/// \file
/// `path` in the format strings of {fmt}, for those who use that library. `filesystem.hpp` does
/// not include this header, and the shared library knows nothing of it.
///
/// `{}` prints `path::display()`, with fill, alignment, width and precision as for text; `{:?}`
/// prints it in double quotes, with a backslash before quotes and backslashes.
///
/// \code
/// fmt::print("{:<20}|{:?}\n", p, p);
/// \endcode

#include "basic_path.hpp"

#include <fmt/format.h>

#include <string>

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

    template <class Context>
    auto format(nura::filesystem::path const& p, Context& context) const -> decltype(context.out())
    {
        std::string const text = p.display();
        if (!quoted_) {
            return fmt::formatter<fmt::string_view>::format(text, context);
        }
        auto out = context.out();
        *out++ = '"';
        for (char const byte : text) {
            if (byte == '"' || byte == '\\') {
                *out++ = '\\';
            }
            *out++ = byte;
        }
        *out++ = '"';
        return out;
    }

private:
    bool quoted_ = false;
};
