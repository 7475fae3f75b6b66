#pragma once

/// \file
/// The characters that pathnames are written with, for both character types, and the two
/// conversions between UTF-16 pathnames and native names.

#include "export.hpp"

#include <string>

namespace nura::filesystem {

/// The constants of pathnames over one character type. Defined for `char` (bytes of a native
/// name, UTF-8) and `char16_t` (UTF-16 code units).
///
/// `PATHNAME_SEPARATOR` stands inside one pathname; `PATH_SEPARATOR` stands between the
/// pathnames of a search list.
template <class Char>
class pathname_traits;

/// The constants in bytes, and tildes in native names.
template <>
class NURA_FILESYSTEM_EXPORT pathname_traits<char> {
public:
    static constexpr char PATHNAME_SEPARATOR_CHARACTER = '/';
    static constexpr char GENERIC_PATHNAME_SEPARATOR_CHARACTER = '/';
    static constexpr char DOT_CHARACTER = '.';
    static constexpr char TILDE_CHARACTER = '~';
    static constexpr char PATH_SEPARATOR_CHAR = ':';

    static constexpr char const* PATHNAME_SEPARATOR = "/";
    static constexpr char const* ROOT_PATHNAME = "/";
    static constexpr char const* CURRENT_DIRECTORY = ".";
    static constexpr char const* PARENT_DIRECTORY = "..";
    static constexpr char const* PATH_SEPARATOR = ":";

    /// Replaces a leading tilde of the native name `name` by a home directory.
    ///
    /// `~` and `~/...` take the environment variable `HOME` or, where that is unset or empty,
    /// the home directory of the current user in the password database (`getpwuid_r`);
    /// `~user` and `~user/...` take that user's entry (`getpwnam_r`). A password entry that
    /// does not fit in 1024 bytes counts as missing.
    ///
    /// Three results surprise and are meant: `~/` gives the home directory without a
    /// separator, while `~user/` keeps its own; with no home directory to be found, `~` and
    /// `~/...` give the empty string, whatever follows the tilde; an unknown user leaves the
    /// name as it was written. A name without a leading tilde comes back unchanged.
    ///
    /// \throws std::bad_alloc only; a missing home directory is not an error
    [[nodiscard]] static std::string replace_tilde_with_home_dir(std::string const& name);
};

/// The constants in UTF-16, the two conversions, and tildes in UTF-16 pathnames.
template <>
class NURA_FILESYSTEM_EXPORT pathname_traits<char16_t> {
public:
    static constexpr char16_t PATHNAME_SEPARATOR_CHARACTER = u'/';
    static constexpr char16_t GENERIC_PATHNAME_SEPARATOR_CHARACTER = u'/';
    static constexpr char16_t DOT_CHARACTER = u'.';
    static constexpr char16_t TILDE_CHARACTER = u'~';
    static constexpr char16_t PATH_SEPARATOR_CHAR = u':';

    static constexpr char16_t const* PATHNAME_SEPARATOR = u"/";
    static constexpr char16_t const* ROOT_PATHNAME = u"/";
    static constexpr char16_t const* CURRENT_DIRECTORY = u".";
    static constexpr char16_t const* PARENT_DIRECTORY = u"..";
    static constexpr char16_t const* PATH_SEPARATOR = u":";

    /// Converts the UTF-16 pathname `pathname`, as given, to its native name in UTF-8.
    ///
    /// An unpaired surrogate becomes U+FFFD, except for a high surrogate as the last unit:
    /// the name is then incomplete, and the whole result is empty. The result is also empty
    /// where no converter can be had (`iconv_open` failed in this thread). U+0000 is kept.
    ///
    /// \throws std::bad_alloc only; bad input never throws
    [[nodiscard]] static std::string to_filesystem(std::u16string const& pathname);

    /// Converts the native name `name` to UTF-16.
    ///
    /// Each byte that belongs to no valid UTF-8 sequence, a truncated one at the end included,
    /// becomes one U+FFFD. The result is empty where no converter can be had.
    ///
    /// \throws std::bad_alloc only; bad input never throws
    [[nodiscard]] static std::u16string from_filesystem(std::string const& name);

    /// As `pathname_traits<char>::replace_tilde_with_home_dir`, by way of the native name:
    /// what conversion does to units that cannot be converted happens here too. The result is
    /// empty where the conversion back fails.
    [[nodiscard]] static std::u16string replace_tilde_with_home_dir(std::u16string const& pathname);
};

/// Pathname constants for code that builds UTF-16 text.
class NURA_FILESYSTEM_EXPORT upath_constant {
public:
    static constexpr char16_t const* GENERIC_PATHNAME_SEPARATOR = u"/";
    static constexpr char16_t const* PATHNAME_SEPARATOR = u"/";
    static constexpr char16_t const* PATH_SEPARATOR = u":";
    static constexpr char16_t const* FILE_EXTENSION_SEPARATOR = u".";
    static constexpr char16_t const* CURRENT_DIRECTORY = u".";
    static constexpr char16_t const* PARENT_DIRECTORY = u"..";
    static constexpr char16_t const* WILD_CARD = u"*";
};

} // namespace nura::filesystem
