#pragma once

/// \file
/// `path`: a pathname as a value.

#include "export.hpp"
#include "path_traits.hpp"
#include "pathname_grammar.hpp"

#if __has_include(<compare>)
#    include <compare>
#endif
#include <cstddef>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace nura::filesystem {

/// A bidirectional walk over the elements of a `path`: the root "/" if there is one, then the
/// names between the separators. It yields views into the path and allocates nothing; changing
/// or destroying the path ends its validity.
class path_iterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = std::u16string_view;
    using difference_type = std::ptrdiff_t;
    using reference = std::u16string_view;

    /// What `->` answers: the view that `*` yields, kept alive for the member access.
    class pointer {
    public:
        explicit pointer(std::u16string_view element) noexcept : element_{element} {}
        std::u16string_view const* operator->() const noexcept { return &element_; }

    private:
        std::u16string_view element_;
    };

    path_iterator() noexcept = default;

    /// The first element of `text`, a pathname in native form.
    [[nodiscard]] static path_iterator first_of(std::u16string_view text)
    {
        return {text, detail::first_element(text, root_length_of(text))};
    }

    /// The end of `text`.
    [[nodiscard]] static path_iterator end_of(std::u16string_view text)
    {
        return {text, {text.size(), 0}};
    }

    [[nodiscard]] reference operator*() const noexcept
    {
        return {text_.data() + at_.start, at_.length};
    }
    [[nodiscard]] pointer operator->() const noexcept { return pointer{**this}; }

    path_iterator& operator++()
    {
        at_ = detail::next_element(text_, root_length_of(text_), at_);
        return *this;
    }
    path_iterator operator++(int)
    {
        auto const before = *this;
        ++*this;
        return before;
    }
    path_iterator& operator--()
    {
        if (at_.start != 0) {
            at_ = detail::previous_element(text_, root_length_of(text_), at_.start);
        }
        return *this;
    }
    path_iterator operator--(int)
    {
        auto const before = *this;
        --*this;
        return before;
    }

    /// Compares positions: only iterators of the same path may be compared.
    friend bool operator==(path_iterator const& a, path_iterator const& b) noexcept
    {
        return a.at_.start == b.at_.start;
    }
    friend bool operator!=(path_iterator const& a, path_iterator const& b) noexcept
    {
        return !(a == b);
    }

private:
    path_iterator(std::u16string_view text, detail::element_position at) noexcept
        : text_{text}, at_{at}
    {
    }

    static std::size_t root_length_of(std::u16string_view text) noexcept
    {
        return !text.empty() && text.front() == *pathname_traits<char16_t>::ROOT_PATHNAME ? 1 : 0;
    }

    std::u16string_view text_;
    detail::element_position at_{0, 0};
};

/// A pathname in native form (see `detail::make_native_form`) and a tilde switch. Use it as
/// `path`.
///
/// The text has no doubled separators and no trailing one, except for "/" itself; "." and ".."
/// stay as written. Nothing in this type looks at files; the expansion of a tilde reads `HOME` or
/// the password database.
///
/// Where a member returns text of the path, it returns a view that lives as long as the path is
/// neither changed nor destroyed; on a temporary path it returns a string instead.
///
/// \code{.cpp}
/// nfs::path p{u"~/projects//nura/"};   // /home/u/projects/nura
/// p /= u"README.md";
/// p.filename();                        // README.md
/// p.extension();                       // md, without the dot
/// std::cout << p;                      // /home/u/projects/nura/README.md, in UTF-8
/// \endcode
template <class NativeChar = char, class Char = char16_t,
          class Traits = detail::path_traits<NativeChar, Char>>
class basic_path {
    static_assert(std::is_same_v<Char, char16_t>, "pathnames are UTF-16");

public:
    using value_type = Char;
    using string_type = std::basic_string<Char>;
    using string_view_type = std::basic_string_view<Char>;
    using traits_type = Traits;
    using const_iterator = path_iterator;
    using iterator = const_iterator;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;
    using reverse_iterator = const_reverse_iterator;

    /// The empty path, with the tilde switch on.
    basic_path() = default;

    /// The native form of `text`. `expand_tilde` says whether a leading tilde is replaced by a
    /// home directory, here and when something is appended later. The text is not checked:
    /// unpaired surrogates stay.
    ///
    /// The constructors are explicit so that a string or a `u"..."` literal always chooses the
    /// string overload of an operation.
    explicit basic_path(Char const* text, bool expand_tilde = true)
        : basic_path(string_type(text), expand_tilde)
    {
    }
    explicit basic_path(string_type const& text, bool expand_tilde = true)
        : pathname_{Traits::make_native_form(text, expand_tilde)}, expand_tilde_{expand_tilde}
    {
    }
    explicit basic_path(string_view_type text, bool expand_tilde = true)
        : basic_path(string_type(text), expand_tilde)
    {
    }

    /// The switch is a `bool` and nothing that merely converts to one, such as a second text.
    template <class Text, class Switch, std::enable_if_t<!std::is_same_v<Switch, bool>, int> = 0>
    basic_path(Text const& text, Switch expand_tilde) = delete;

    /// The path that a standard path names. The standard knows no tilde: none is expanded, and
    /// the switch of the result is off. Any other type that converts to a standard path, narrow
    /// text above all, is not accepted.
    ///
    /// \throws InvalidArgument "Text is not valid UTF-8" with the decoded text as pathname,
    ///         U+FFFD in place of each undecodable byte: a substitute would name another file
    template <class Path, std::enable_if_t<std::is_same_v<Path, std::filesystem::path>, int> = 0>
    explicit basic_path(Path const& other) : basic_path(from_utf8(other.native(), false))
    {
    }

    /// The native form of `text`, which is UTF-8.
    ///
    /// \throws InvalidArgument "Text is not valid UTF-8" with the decoded text as pathname,
    ///         U+FFFD in place of each undecodable byte
    /// \throws InvalidArgument "No converter for UTF-8", no pathname, where the system gives none:
    ///         the first conversion of a thread needs a descriptor
    [[nodiscard]] static basic_path from_utf8(std::string_view text, bool expand_tilde = true);
    template <class Switch, std::enable_if_t<!std::is_same_v<Switch, bool>, int> = 0>
    static basic_path from_utf8(std::string_view text, Switch expand_tilde) = delete;

    /// The text, in native form.
    [[nodiscard]] string_type const& pathname() const& noexcept { return pathname_; }
    [[nodiscard]] string_type pathname() && { return std::move(pathname_); }
    [[nodiscard]] string_type pathname() const&& { return pathname_; }

    /// Whether a tail that is appended has a leading tilde expanded.
    [[nodiscard]] bool expand_tilde() const noexcept { return expand_tilde_; }

    [[nodiscard]] bool empty() const noexcept { return pathname_.empty(); }

    /// \name Conversion
    /// @{

    /// The text in UTF-8, exactly: `from_utf8` with `expand_tilde` false gives the same path back.
    ///
    /// \throws InvalidArgument "Text is not valid UTF-16" with the pathname, if a surrogate is
    ///         unpaired
    [[nodiscard]] std::string to_utf8() const;

    /// The text in UTF-8 for people: control units (U+0000 to U+001F, U+007F to U+009F) and
    /// unpaired surrogates appear as `\u` and four upper-case hexadecimal digits.
    [[nodiscard]] std::string display() const;

    /// `text`, such as an element, in the same form.
    [[nodiscard]] static std::string display(string_view_type text);

    /// The standard path of the same name.
    ///
    /// \throws std::runtime_error "locale not supported" if a surrogate is unpaired
    [[nodiscard]] explicit operator std::filesystem::path() const;

    /// @}
    /// \name Decomposition
    /// By the rules of the functions of the same names in `pathname_grammar.hpp`.
    /// @{

    [[nodiscard]] bool is_absolute() const noexcept
    {
        return !pathname_.empty() && pathname_.front() == *pathname_traits<Char>::ROOT_PATHNAME;
    }
    [[nodiscard]] bool is_relative() const noexcept { return !is_absolute(); }

    /// "/" or empty.
    [[nodiscard]] basic_path root_path() const;

    /// Always empty: there are no root names on POSIX systems.
    [[nodiscard]] basic_path root_name() const;

    /// The same as `root_path`.
    [[nodiscard]] basic_path root_directory() const;

    /// The path without its root.
    [[nodiscard]] basic_path relative_path() const;

    /// The path without its last element: empty for "/", for a single name and for the empty
    /// path.
    [[nodiscard]] basic_path parent_path() const;

    /// The last element: "/" for "/".
    [[nodiscard]] string_view_type filename() const& noexcept;
    [[nodiscard]] string_type filename() const&&
    {
        return string_type(static_cast<basic_path const&>(*this).filename());
    }

    /// The filename before its last '.': empty for `.profile`.
    [[nodiscard]] string_view_type stem() const& noexcept;
    [[nodiscard]] string_type stem() const&&
    {
        return string_type(static_cast<basic_path const&>(*this).stem());
    }

    /// The filename after its last '.', without the dot: `profile` for `.profile`.
    [[nodiscard]] string_view_type extension() const& noexcept;
    [[nodiscard]] string_type extension() const&&
    {
        return string_type(static_cast<basic_path const&>(*this).extension());
    }

    /// Parent, filename, stem and extension at once, by `extract_pathname_elements`, whose stem
    /// and extension differ for names that end in a dot.
    [[nodiscard]] detail::pathname_elements elements() const;

    /// The elements in order, as `move_down` and `move_up` visit them. They are text: appended to a
    /// path whose switch is on, one that begins with '~' is expanded.
    [[nodiscard]] const_iterator begin() const& { return const_iterator::first_of(pathname_); }
    [[nodiscard]] const_iterator end() const& { return const_iterator::end_of(pathname_); }
    [[nodiscard]] const_reverse_iterator rbegin() const& { return const_reverse_iterator{end()}; }
    [[nodiscard]] const_reverse_iterator rend() const& { return const_reverse_iterator{begin()}; }
    [[nodiscard]] const_iterator begin() const&& = delete;
    [[nodiscard]] const_iterator end() const&& = delete;
    [[nodiscard]] const_reverse_iterator rbegin() const&& = delete;
    [[nodiscard]] const_reverse_iterator rend() const&& = delete;

    /// @}
    /// \name Change
    /// @{

    /// Appends `tail`, in native form, with a separator between. An empty tail changes nothing.
    ///
    /// \throws InvalidArgument "Absolute path not permitted", no pathname, if the path is not
    ///         empty and the tail, expanded if the switch is on, begins with '/'; the path is
    ///         then unchanged
    basic_path& operator/=(string_view_type tail);

    /// Appends a path, whose tilde, if it has one, was meant literally.
    basic_path& operator/=(basic_path const& tail);

    /// Removes the last element: "/" and a single name become empty.
    basic_path& remove_filename();

    /// Replaces the extension or adds one, by `detail::replace_extension`.
    ///
    /// \throws InvalidArgument "Invalid extension", no pathname, if `extension` is ".", begins
    ///         with two dots or holds a '/'; the path is then unchanged
    basic_path& replace_extension(string_view_type extension);

    /// Removes the extension with its dot, where `replace_extension` would replace one, unless
    /// nothing would be left of the filename: `a.txt` becomes `a`, `.profile` stays.
    basic_path& remove_extension();

    void swap(basic_path& other) noexcept
    {
        pathname_.swap(other.pathname_);
        std::swap(expand_tilde_, other.expand_tilde_);
    }

    /// @}

    /// The hash of the text, the same in every process: 64-bit CityHash 1.0 of its UTF-16LE
    /// bytes, or its lower half where `std::size_t` has 32 bits.
    [[nodiscard]] std::size_t hash() const noexcept;

    [[nodiscard]] friend basic_path operator/(basic_path base, string_view_type tail)
    {
        base /= tail;
        return base;
    }
    [[nodiscard]] friend basic_path operator/(basic_path base, basic_path const& tail)
    {
        base /= tail;
        return base;
    }

    /// Comparisons are those of the text, unit by unit. The tilde switch takes no part.
    friend bool operator==(basic_path const& a, basic_path const& b) noexcept
    {
        return a.pathname_ == b.pathname_;
    }
    friend bool operator!=(basic_path const& a, basic_path const& b) noexcept
    {
        return a.pathname_ != b.pathname_;
    }
    friend bool operator<(basic_path const& a, basic_path const& b) noexcept
    {
        return a.pathname_ < b.pathname_;
    }
    friend bool operator>(basic_path const& a, basic_path const& b) noexcept { return b < a; }
    friend bool operator<=(basic_path const& a, basic_path const& b) noexcept { return !(b < a); }
    friend bool operator>=(basic_path const& a, basic_path const& b) noexcept { return !(a < b); }

#if defined(__cpp_lib_three_way_comparison)
    friend std::strong_ordering operator<=>(basic_path const& a, basic_path const& b) noexcept
    {
        return a.pathname_ <=> b.pathname_;
    }
#endif

    friend void swap(basic_path& a, basic_path& b) noexcept
    {
        a.swap(b);
    }

    /// For `boost::hash` and containers that find it by argument-dependent lookup.
    friend std::size_t hash_value(basic_path const& p) noexcept
    {
        return p.hash();
    }

    /// Writes `display()`.
    friend std::ostream& operator<<(std::ostream& out, basic_path const& p)
    {
        return out << p.display();
    }

private:
    struct in_native_form {};

    /// Takes text that is in native form already: the public constructors would expand a tilde
    /// a second time.
    basic_path(in_native_form /*tag*/, string_type text, bool expand_tilde)
        : pathname_{std::move(text)}, expand_tilde_{expand_tilde}
    {
    }

    string_type pathname_;
    bool expand_tilde_ = true;
};

/// The path of applications: UTF-16 text over a file system whose names are bytes.
using path = basic_path<>;

extern template class NURA_FILESYSTEM_EXPORT basic_path<>;

namespace literals {

/// `u"a/b"_path` is `path(u"a/b")`.
[[nodiscard]] inline path operator""_path(char16_t const* text, std::size_t length)
{
    return path{std::u16string_view{text, length}};
}

} // namespace literals

} // namespace nura::filesystem

/// The hash of a path is that of its text; see `basic_path::hash`.
template <class NativeChar, class Char, class Traits>
struct std::hash<nura::filesystem::basic_path<NativeChar, Char, Traits>> {
    std::size_t
    operator()(nura::filesystem::basic_path<NativeChar, Char, Traits> const& p) const noexcept
    {
        return p.hash();
    }
};
