#pragma once

#include <string>

namespace nura::filesystem::detail {

/// Appends `\u` and the four upper-case hexadecimal digits of `unit`, to text of either
/// character type.
template <class Char>
void append_escaped(std::basic_string<Char>& text, char16_t unit)
{
    constexpr char const* digits = "0123456789ABCDEF";
    text += Char{'\\'};
    text += Char{'u'};
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += static_cast<Char>(digits[(unit >> shift) & 0xF]);
    }
}

} // namespace nura::filesystem::detail
