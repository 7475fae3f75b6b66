#include <filesystem/path_traits.hpp>

#include "pathname/grammar.hpp"

#include <string_view>

namespace nura::filesystem::detail {

namespace {

using narrow_view = std::string_view;
using utf16_view = std::u16string_view;

} // namespace

std::string path_traits<char, char>::make_native_form(std::string const& p, bool expand_tilde)
{
    return grammar::native_form(narrow_view{p}, expand_tilde);
}

std::string& path_traits<char, char>::concatenate_pathname(std::string& base,
                                                           std::string const& tail,
                                                           bool expand_tilde)
{
    grammar::concatenate(base, narrow_view{tail}, expand_tilde);
    return base;
}

std::string& path_traits<char, char>::remove_filename(std::string& p)
{
    grammar::remove_filename(p);
    return p;
}

std::string path_traits<char, char>::extract_filename(std::string const& p)
{
    return std::string{grammar::filename(narrow_view{p})};
}

bool path_traits<char, char>::is_absolute(std::string const& p)
{
    return grammar::is_absolute(narrow_view{p});
}

std::u16string path_traits<char, char16_t>::make_native_form(std::u16string const& p,
                                                             bool expand_tilde)
{
    return grammar::native_form(utf16_view{p}, expand_tilde);
}

std::u16string& path_traits<char, char16_t>::concatenate_pathname(std::u16string& base,
                                                                  std::u16string const& tail,
                                                                  bool expand_tilde)
{
    grammar::concatenate(base, utf16_view{tail}, expand_tilde);
    return base;
}

std::u16string& path_traits<char, char16_t>::remove_filename(std::u16string& p)
{
    grammar::remove_filename(p);
    return p;
}

std::u16string path_traits<char, char16_t>::extract_filename(std::u16string const& p)
{
    return std::u16string{grammar::filename(utf16_view{p})};
}

bool path_traits<char, char16_t>::is_absolute(std::u16string const& p)
{
    return grammar::is_absolute(utf16_view{p});
}

} // namespace nura::filesystem::detail
