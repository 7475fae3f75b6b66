#pragma once

#include "errors/raise.hpp"
#include "pathname/separators.hpp"

#include <filesystem/pathname_traits.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

/// The pathname grammar, written once for both character types and on views. What is exported
/// is a wrapper around this; what the public headers need inline stands in `pathname_grammar.hpp`.
namespace nura::filesystem::detail::grammar {

template <class Char>
using text = std::basic_string<Char>;

template <class Char>
using view = std::basic_string_view<Char>;

template <class Char>
using constants = pathname_traits<Char>;

template <class Char>
constexpr Char dot = constants<Char>::DOT_CHARACTER;

inline constexpr std::size_t npos = std::string_view::npos;

template <class Char>
constexpr bool is_absolute(view<Char> p)
{
    return !p.empty() && p.front() == *constants<Char>::ROOT_PATHNAME;
}

template <class Char>
constexpr std::size_t root_path_length(view<Char> p)
{
    return is_absolute(p) ? 1 : 0;
}

template <class Char>
view<Char> root_path(view<Char> p)
{
    return is_absolute(p) ? view<Char>{constants<Char>::ROOT_PATHNAME} : view<Char>{};
}

template <class Char>
bool is_dot_element(view<Char> element)
{
    return element == constants<Char>::CURRENT_DIRECTORY ||
           element == constants<Char>::PARENT_DIRECTORY;
}

template <class Char>
bool needs_tilde_expansion(view<Char> p, bool expand_tilde)
{
    return expand_tilde && !p.empty() && p.front() == constants<Char>::TILDE_CHARACTER;
}

template <class Char>
bool has_trailing_separator(view<Char> p)
{
    return p.size() >= 2 && p.back() == separator<Char>;
}

/// True if `native_form` would give `p` back.
template <class Char>
bool is_native_form(view<Char> p, bool expand_tilde)
{
    return !needs_tilde_expansion(p, expand_tilde) && !has_trailing_separator(p) &&
           first_doubled_separator(p) == npos;
}

/// Writes the `count` units at `from` to `to`, where as many as `room` units may be read and
/// written. What is copied beyond `count`, for the sake of whole blocks, counts for nothing.
template <class Char>
void copy_units(Char const* from, std::size_t count, std::size_t room, Char* to)
{
    constexpr std::size_t block = 16 / sizeof(Char);
    std::size_t done = 0;
    for (; done < count && done + block <= room; done += block) {
        std::memcpy(to + done, from + done, block * sizeof(Char));
    }
    for (; done < count; ++done) {
        to[done] = from[done];
    }
}

template <class Char>
view<Char> without_trailing_separator(view<Char> p)
{
    return p.substr(0, p.size() - (has_trailing_separator(p) ? 1 : 0));
}

/// `p` without the separators that follow another one, of which `first` is the first, and
/// without one at its end.
template <class Char>
[[gnu::noinline]] text<Char> collapsed_from(view<Char> p, std::size_t first)
{
    text<Char> form(p.data(), p.size());
    std::size_t kept = first; // units of `form` that are in place
    std::size_t from = first + 1;
    auto const keep_until = [&](std::size_t end) {
        copy_units(p.data() + from, end - from, p.size() - from, form.data() + kept);
        kept += end - from;
    };
    visit_doubled_separators(p, from, true, [&](std::size_t dropped) {
        keep_until(dropped);
        from = dropped + 1;
        return true;
    });
    keep_until(p.size());
    form.resize(without_trailing_separator(view<Char>{form.data(), kept}).size());
    return form;
}

/// Native form without the tilde: allocates once, at the length of `p`, and shortens at most
/// once.
template <class Char>
text<Char> collapsed(view<Char> p)
{
    std::size_t const first = first_doubled_separator(p);
    if (first != npos) {
        return collapsed_from(p, first);
    }
    p = without_trailing_separator(p);
    return text<Char>(p.data(), p.size()); // by far the cheapest of the constructors
}

template <class Char>
[[gnu::noinline]] text<Char> with_home_directory(view<Char> p)
{
    return collapsed(view<Char>{constants<Char>::replace_tilde_with_home_dir(text<Char>{p})});
}

template <class Char>
text<Char> native_form(view<Char> p, bool expand_tilde)
{
    return needs_tilde_expansion(p, expand_tilde) ? with_home_directory(p) : collapsed(p);
}

template <class Char>
view<Char> relative_path(view<Char> p)
{
    return p.substr(root_path_length(p));
}

template <class Char>
view<Char> parent_path(view<Char> p)
{
    std::size_t const last = last_separator(p);
    if (last == npos) {
        return {};
    }
    if (last == 0) {
        return p.size() == 1 ? view<Char>{} : p.substr(0, 1);
    }
    return p.substr(0, last);
}

template <class Char>
view<Char> filename(view<Char> p)
{
    std::size_t const last = last_separator(p);
    return last == npos || p.size() == 1 ? p : p.substr(last + 1);
}

template <class Char>
view<Char> stem(view<Char> p)
{
    view<Char> const name = filename(p);
    return is_dot_element(name) ? name : name.substr(0, name.rfind(dot<Char>));
}

template <class Char>
view<Char> extension(view<Char> p)
{
    view<Char> const name = filename(p);
    std::size_t const last = name.rfind(dot<Char>);
    return last == npos || is_dot_element(name) ? view<Char>{} : name.substr(last + 1);
}

template <class Char>
void concatenate(text<Char>& base, view<Char> tail, bool expand_tilde)
{
    text<Char> form = native_form(tail, expand_tilde);
    if (base.empty()) {
        base = std::move(form);
        return;
    }
    if (is_absolute(view<Char>{form})) {
        raise_invalid_argument("Absolute path not permitted");
    }
    base.reserve(base.size() + 1 + form.size()); // what follows cannot fail half-way
    if (base.back() != separator<Char>) {
        base += separator<Char>;
    }
    base += form; // an empty tail has added the separator: callers rely on it
}

template <class Char>
void remove_filename(text<Char>& p)
{
    p.resize(parent_path(view<Char>{p}).size());
}

/// Whether `extension` begins with a dot; refuses what is no extension.
template <class Char>
bool begins_with_dot(view<Char> extension)
{
    bool const dotted = extension.front() == dot<Char>;
    bool const valid = !(dotted && (extension.size() == 1 || extension[1] == dot<Char>)) &&
                       extension.find(separator<Char>) == npos;
    if (!valid) {
        raise_invalid_argument("Invalid extension");
    }
    return dotted;
}

/// Where the dot stands that begins the extension to be replaced in `p`, or `npos`. A dot in last
/// place begins none: `a.` with `md` is `a..md`. `name` is the filename.
template <class Char>
std::size_t extension_dot(view<Char> p, view<Char> name)
{
    std::size_t const last_dot = name.rfind(dot<Char>);
    return last_dot == npos || last_dot + 1 == name.size() || is_dot_element(name)
               ? npos
               : p.size() - name.size() + last_dot;
}

template <class Char>
void remove_extension(text<Char>& p)
{
    view<Char> const name = filename(view<Char>{p});
    std::size_t const last_dot = extension_dot(view<Char>{p}, name);
    if (last_dot != npos && last_dot != p.size() - name.size()) {
        p.resize(last_dot);
    }
}

template <class Char>
void replace_extension(text<Char>& p, view<Char> extension)
{
    if (p.empty() || extension.empty() || p.back() == separator<Char>) {
        return;
    }
    view<Char> const name = filename(view<Char>{p});
    if (is_dot_element(name)) {
        return;
    }
    if (begins_with_dot(extension)) {
        extension.remove_prefix(1);
    }
    text<Char> replaced = p.substr(0, extension_dot(view<Char>{p}, name));
    replaced += dot<Char>;
    replaced += extension;
    p = std::move(replaced);
}

} // namespace nura::filesystem::detail::grammar
