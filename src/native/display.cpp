#include "native/display.hpp"

#include "native/name_conversion.hpp"
#include "native/unit_escape.hpp"

#include <cstddef>

namespace nura::filesystem::detail {

namespace {

bool is_control(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

bool is_high_surrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool is_low_surrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

/// How many units the character at `text[at]` takes: 0 for an unpaired surrogate.
std::size_t character_length(std::u16string_view text, std::size_t at)
{
    if (is_low_surrogate(text[at])) {
        return 0;
    }
    if (!is_high_surrogate(text[at])) {
        return 1;
    }
    return at + 1 < text.size() && is_low_surrogate(text[at + 1]) ? 2 : 0;
}

} // namespace

std::string display_form(std::u16string_view text)
{
    std::u16string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const length = character_length(text, at);
        if (length == 0 || is_control(text[at])) {
            append_escaped(escaped, text[at]);
            ++at;
        } else {
            escaped += text.substr(at, length);
            at += length;
        }
    }
    std::string shown =
        posix::detail::to_filesystem_native_impl(escaped, posix::detail::native_encoding);
    if (shown.empty()) {
        // No converter to be had, for want of a descriptor: a failure must name its file even so.
        for (char16_t const unit : escaped) {
            if (unit < 0x80) {
                shown += static_cast<char>(unit);
            } else {
                append_escaped(shown, unit);
            }
        }
    }
    return shown;
}

bool is_well_formed(std::u16string_view text) noexcept
{
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const length = character_length(text, at);
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

} // namespace nura::filesystem::detail
