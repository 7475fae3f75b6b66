#pragma once

#include <string>
#include <string_view>

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

/// `text` in UTF-8 for people to read: control units (U+0000 to U+001F, U+007F to U+009F) and
/// unpaired surrogates are escaped.
std::string display_form(std::u16string_view text);

/// True if no surrogate in `text` is unpaired.
bool is_well_formed(std::u16string_view text) noexcept;

} // namespace nura::filesystem::detail
