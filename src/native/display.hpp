#pragma once

#include <string>
#include <string_view>

namespace nura::filesystem::detail {

/// `text` in UTF-8 for people to read: control units (U+0000 to U+001F, U+007F to U+009F) and
/// unpaired surrogates are escaped.
std::string display_form(std::u16string_view text);

/// True if no surrogate in `text` is unpaired.
bool is_well_formed(std::u16string_view text) noexcept;

} // namespace nura::filesystem::detail
