#include <filesystem/pathname_grammar.hpp>

#include "native/name_conversion.hpp"
#include "pathname/grammar.hpp"

namespace nura::filesystem::detail {

using text = std::u16string;
using view = std::u16string_view;

std::size_t get_root_path_length(text const& p)
{
    return grammar::root_path_length(view{p});
}

bool is_absolute(text const& p)
{
    return grammar::is_absolute(view{p});
}

text extract_root_path(text const& p)
{
    return text{grammar::root_path(view{p})};
}

text extract_root_name(text const& /*p*/)
{
    return {};
}

text extract_root_directory(text const& p)
{
    return extract_root_path(p);
}

text make_native_form(text const& p, bool expand_tilde)
{
    return grammar::native_form(view{p}, expand_tilde);
}

text make_generic_form(text const& p)
{
    return p;
}

std::string make_native_access_form_with_cleanup(text const& s)
{
    return make_native_access_form(make_native_form(s, true));
}

text extract_relative_path(text const& p)
{
    return text{grammar::relative_path(view{p})};
}

text extract_parent_path(text const& p)
{
    return text{grammar::parent_path(view{p})};
}

text extract_filename(text const& p)
{
    return text{grammar::filename(view{p})};
}

text extract_stem(text const& p)
{
    return text{grammar::stem(view{p})};
}

text extract_extension(text const& p)
{
    return text{grammar::extension(view{p})};
}

pathname_elements extract_pathname_elements(text const& p)
{
    view const filename = grammar::filename(view{p});
    std::size_t const dot = filename.rfind(grammar::dot<char16_t>);
    bool const has_extension = dot != view::npos && dot + 1 != filename.size();
    pathname_elements elements{text{grammar::parent_path(view{p})}, text{filename}, {}, {}};
    elements.stem = filename.substr(0, has_extension ? dot : view::npos);
    elements.extension = has_extension ? filename.substr(dot + 1) : view{};
    return elements;
}

text extract_first_element(text const& p, std::size_t pos)
{
    return text{first_element(p, pos).in(p)};
}

text& concatenate_pathname(text& base, text const& tail, bool expand_tilde)
{
    grammar::concatenate(base, view{tail}, expand_tilde);
    return base;
}

text& remove_filename(text& p)
{
    grammar::remove_filename(p);
    return p;
}

text& replace_extension(text& p, text const& ext)
{
    grammar::replace_extension(p, view{ext});
    return p;
}

void move_down(text const& p, std::size_t root_length, std::size_t& pos, text& element)
{
    element_position const next = next_element(p, root_length, {pos, element.size()});
    element = next.in(p);
    pos = next.start;
}

void move_up(text const& p, std::size_t root_length, std::size_t& pos, text& element)
{
    if (pos == 0) {
        return;
    }
    element_position const previous = previous_element(p, root_length, pos);
    element = pos == root_length ? view{upath_constant::PATHNAME_SEPARATOR} : previous.in(p);
    pos = previous.start;
}

text make_expanded_path(text const& p, bool no_expansion)
{
    return no_expansion ? p : pathname_traits<char16_t>::replace_tilde_with_home_dir(p);
}

bool is_absolute_path_when_expanded(text const& p, bool no_expansion)
{
    if (p.empty() || no_expansion || p.front() != pathname_traits<char16_t>::TILDE_CHARACTER) {
        return is_absolute(p);
    }
    return is_absolute(pathname_traits<char16_t>::replace_tilde_with_home_dir(p));
}

} // namespace nura::filesystem::detail
