#pragma once

/// \file
/// The part of the pathname grammar that exists for both character types.

#include "export.hpp"

#include <string>

namespace nura::filesystem::detail {

/// The grammar of pathnames held as `Char` on a system whose names are made of `NativeChar`.
/// Each member follows the function of the same name in `pathname_grammar.hpp`, exceptions
/// included.
template <class NativeChar, class Char>
class path_traits;

/// Over native names, in bytes. No conversion between encodings takes place: a '/' can be no
/// part of a longer UTF-8 sequence.
template <>
class NURA_FILESYSTEM_EXPORT path_traits<char, char> {
public:
    [[nodiscard]] static std::string make_native_form(std::string const& p, bool expand_tilde);
    static std::string& concatenate_pathname(std::string& base, std::string const& tail,
                                             bool expand_tilde);
    static std::string& remove_filename(std::string& p);
    [[nodiscard]] static std::string extract_filename(std::string const& p);
    [[nodiscard]] static bool is_absolute(std::string const& p);
};

/// Over UTF-16 pathnames.
template <>
class NURA_FILESYSTEM_EXPORT path_traits<char, char16_t> {
public:
    [[nodiscard]] static std::u16string make_native_form(std::u16string const& p,
                                                         bool expand_tilde);
    static std::u16string& concatenate_pathname(std::u16string& base, std::u16string const& tail,
                                                bool expand_tilde);
    static std::u16string& remove_filename(std::u16string& p);
    [[nodiscard]] static std::u16string extract_filename(std::u16string const& p);
    [[nodiscard]] static bool is_absolute(std::u16string const& p);
};

/// The same as `path_traits<char, char16_t>`.
template <>
class NURA_FILESYSTEM_EXPORT path_traits<char16_t, char16_t> : public path_traits<char, char16_t> {
};

} // namespace nura::filesystem::detail
