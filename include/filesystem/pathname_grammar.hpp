#pragma once

/// \file
/// The pathname grammar: string algorithms over UTF-16 pathnames.
///
/// Unless it says otherwise, a function takes a pathname in native form, does not normalise it
/// and asks the file system nothing. Lengths and positions count UTF-16 code units. Apart from
/// what is listed, functions throw `std::bad_alloc` and `std::length_error` only.
///
/// Most users want `path`, which offers the same with views and iterators.

#include "export.hpp"
#include "pathname_traits.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace nura::filesystem::detail {

/// \name Roots
/// The only root is one leading '/'. A leading '~' is none before it is expanded.
/// @{

/// 1 if `p` begins with '/', else 0.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::size_t get_root_path_length(std::u16string const& p);

/// True if `p` begins with '/'. `~/x` is not absolute: see `is_absolute_path_when_expanded`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool is_absolute(std::u16string const& p);

/// "/" if `p` begins with '/', else empty.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_root_path(std::u16string const& p);

/// Always empty: there are no root names on POSIX systems.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_root_name(std::u16string const& p);

/// The same as `extract_root_path`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_root_directory(std::u16string const& p);

/// @}
/// \name Forms
/// @{

/// The native form of any pathname: with `expand_tilde` a leading tilde is replaced by a home
/// directory, then every run of '/' becomes one, then one trailing '/' goes unless the text is
/// "/". "." and ".." stay, nothing is made absolute, and the empty pathname stays empty without
/// a look-up of the home directory.
///
/// \code{.cpp}
/// using nfs::detail::make_native_form;
/// std::u16string const form = make_native_form(u"///a//./b/", false); // /a/./b
/// std::u16string const home = make_native_form(u"~/x//y", true);      // /home/u/x/y
/// \endcode
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string make_native_form(std::u16string const& p,
                                                                     bool expand_tilde);

/// A copy of `p`: the generic separator is the native one. Nothing is normalised.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string make_generic_form(std::u16string const& p);

/// The native name of `make_native_form(s, true)`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::string
make_native_access_form_with_cleanup(std::u16string const& s);

/// @}
/// \name Decomposition
/// @{

/// `p` without its first unit if that is '/', else `p`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_relative_path(std::u16string const& p);

/// What stands before the last '/': empty for "/" and for a pathname without '/', "/" for `/a`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_parent_path(std::u16string const& p);

/// What stands after the last '/': "/" for "/", empty for a pathname that ends in '/'.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_filename(std::u16string const& p);

/// The filename up to its last '.': "." and ".." whole, empty for `.profile`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_stem(std::u16string const& p);

/// The filename after its last '.', without the dot: empty for "." and "..", `profile` for
/// `.profile`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_extension(std::u16string const& p);

/// The four parts that `extract_pathname_elements` yields at once.
struct pathname_elements {
    std::u16string parent_path;
    std::u16string filename;
    std::u16string stem;
    std::u16string extension; ///< without the dot
};

/// All parts at once. A dot in last place does not separate an extension here, unlike in
/// `extract_stem`: for `a.` the stem is `a.`, for `...` it is `...`. The difference is meant.
[[nodiscard]] NURA_FILESYSTEM_EXPORT pathname_elements
extract_pathname_elements(std::u16string const& p);

/// The first element of `p` for a walk: its first `pos` units if `pos` is not 0 (pass the
/// length of the root), else what stands before the first '/', or all of `p` without one.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string extract_first_element(std::u16string const& p,
                                                                          std::size_t pos);

/// @}
/// \name Composition
/// @{

/// Appends the native form of `tail`, made with `expand_tilde`, to `base` and returns `base`.
///
/// An empty `base` becomes the tail; otherwise one '/' goes between unless `base` ends in one.
/// An empty tail adds that '/' too (`a` becomes `a/`): skip the call where it is not wanted.
///
/// \throws InvalidArgument "Absolute path not permitted", no pathname, if `base` is not empty
///         and the tail's native form begins with '/'; `base` is then unchanged
NURA_FILESYSTEM_EXPORT std::u16string&
concatenate_pathname(std::u16string& base, std::u16string const& tail, bool expand_tilde);

/// Removes the last element of `p` and returns `p`: `/a` becomes "/", "/" and `a` become empty.
NURA_FILESYSTEM_EXPORT std::u16string& remove_filename(std::u16string& p);

/// Replaces the extension of `p`, or adds one, and returns `p`.
///
/// `ext` may begin with a dot or not. Nothing changes for an empty `ext`, an empty `p`, a `p`
/// that ends in '/', and the filenames "." and "..". A dot in last place is no extension: `a.`
/// with `md` becomes `a..md`.
///
/// \throws InvalidArgument "Invalid extension", no pathname, if `ext` is ".", begins with two
///         dots or holds a '/'; `p` is then unchanged
NURA_FILESYSTEM_EXPORT std::u16string& replace_extension(std::u16string& p,
                                                         std::u16string const& ext);

/// @}
/// \name Traversal
/// A walk keeps two values: `pos`, where the current element starts, and `element`, its text.
/// It starts with `pos` 0 and `extract_first_element(p, root_length)`, where `root_length` is
/// `get_root_path_length(p)`; its end is `pos == p.size()` with an empty element.
/// \code{.cpp}
/// using namespace nfs::detail;
/// std::u16string const p = u"/usr/bin";
/// std::size_t const root = get_root_path_length(p);
/// std::size_t pos = 0;
/// for (auto element = extract_first_element(p, root); pos < p.size();
///      move_down(p, root, pos, element)) {
///     std::cout << nfs::path::display(element) << '\n'; // "/", "usr", "bin"
/// }
/// \endcode
/// @{

/// Steps to the next element. At the end it stays there, with an empty element.
NURA_FILESYSTEM_EXPORT void move_down(std::u16string const& p, std::size_t root_length,
                                      std::size_t& pos, std::u16string& element);

/// Steps to the previous element. At `pos` 0 nothing changes.
NURA_FILESYSTEM_EXPORT void move_up(std::u16string const& p, std::size_t root_length,
                                    std::size_t& pos, std::u16string& element);

/// Where an element lies in its pathname. `move_down`, `move_up` and the iterators of `path`
/// rest on this one description of a step.
struct element_position {
    std::size_t start;
    std::size_t length;

    [[nodiscard]] std::u16string_view in(std::u16string_view p) const
    {
        return p.substr(std::min(start, p.size()), length);
    }
};

/// The element of `p` that begins at `start`, which is at most `p.size()`.
[[nodiscard]] inline element_position element_from(std::u16string_view p, std::size_t start)
{
    // std::find is unrolled where the member function find, for this character type, is not.
    char16_t const* const first = p.data() + start;
    char16_t const* const end = std::find(first, p.data() + p.size(),
                                          pathname_traits<char16_t>::PATHNAME_SEPARATOR_CHARACTER);
    return {start, static_cast<std::size_t>(end - first)};
}

/// The first element of `p`, by the rule of `extract_first_element`.
[[nodiscard]] inline element_position first_element(std::u16string_view p, std::size_t root_length)
{
    return root_length != 0 ? element_position{0, std::min(root_length, p.size())}
                            : element_from(p, 0);
}

/// The element after `at`, or the end.
[[nodiscard]] inline element_position next_element(std::u16string_view p, std::size_t root_length,
                                                   element_position at)
{
    if (at.start >= p.size()) {
        return {at.start, 0};
    }
    if (at.length >= p.size() - at.start) {
        return {p.size(), 0};
    }
    // No separator follows the root: it is one.
    bool const at_root = at.start == 0 && root_length != 0;
    return element_from(p, at_root ? std::min(root_length, p.size()) : at.start + at.length + 1);
}

/// The element before the one that starts at `pos`, which is not 0.
[[nodiscard]] inline element_position previous_element(std::u16string_view p,
                                                       std::size_t root_length, std::size_t pos)
{
    if (pos == root_length) {
        return {0, 1};
    }
    std::size_t const end = pos >= p.size() ? p.size() : pos - 1;
    std::size_t const separator =
        p.substr(0, end).rfind(pathname_traits<char16_t>::PATHNAME_SEPARATOR_CHARACTER);
    std::size_t const start = separator == std::u16string_view::npos ? 0 : separator + 1;
    return {start, end - start};
}

/// @}
/// \name Native names and home directories
/// @{

/// `pathname_traits<char16_t>::to_filesystem`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::string to_filesystem(std::u16string const& pathname);

/// `pathname_traits<char16_t>::from_filesystem`.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string from_filesystem(std::string const& name);

/// A copy of `name`: on POSIX systems a native name is accessed by itself.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::string make_access_form(std::string const& name);

/// The native name of `s` as given, without any step of the grammar.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::string make_native_access_form(std::u16string const& s);

/// A copy of `p` with `no_expansion`; otherwise `p` with its leading tilde expanded, by way of
/// its native name even where there is no tilde.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::u16string make_expanded_path(std::u16string const& p,
                                                                       bool no_expansion);

/// True if `p`, after the expansion of a leading tilde unless `no_expansion`, begins with '/'.
[[nodiscard]] NURA_FILESYSTEM_EXPORT bool is_absolute_path_when_expanded(std::u16string const& p,
                                                                         bool no_expansion);

/// @}

} // namespace nura::filesystem::detail
