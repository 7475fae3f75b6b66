#include "support.hpp"

#include <filesystem/pathname_grammar.hpp>

#include <pwd.h>

#include <regex>

namespace nura::filesystem::test {

using namespace detail;

/// Each row: a name and what it becomes; '#' stands for U+0000, '@' for the home directory of root.
static void expect_expansions(std::string rows)
{
    std::replace(rows.begin(), rows.end(), '#', '\0');
    rows = std::regex_replace(rows, std::regex{"@"}, ::getpwnam("root")->pw_dir);
    for (auto const& [name, expected] : table<2>(rows)) {
        SCOPED_TRACE(name);
        EXPECT_EQ(pathname_traits<char>::replace_tilde_with_home_dir(name), expected);
        EXPECT_EQ(pathname_traits<char16_t>::replace_tilde_with_home_dir(u16(name)), u16(expected));
        EXPECT_EQ(make_expanded_path(u16(name), false), u16(expected));
        EXPECT_EQ(make_expanded_path(u16(name), true), u16(name));
        EXPECT_EQ(is_absolute_path_when_expanded(u16(name), false), expected.starts_with('/'));
        EXPECT_EQ(is_absolute_path_when_expanded(u16(name), true), name.starts_with('/'));
    }
}

TEST(home_directory, comes_from_the_environment_and_then_from_the_password_file)
{
    ::setenv("HOME", "/h/u", 1);
    expect_expansions(
        "'' ''  x x  /x /x  a/~b a/~b  ~ /h/u  ~/ /h/u  ~//x// /h/u//x//  ~/a#b /h/u/a#b");
    expect_expansions(
        "~root @  ~root/ @/  ~root//x @//x  ~root#/x ~root#/x  ~# ~#  ~none/x ~none/x");
    ::setenv("HOME", "~u/", 1);
    expect_expansions("~ ~u/  ~/ ~u/  ~/x ~u//x");
    passwd const* const own = ::getpwuid(::getuid());
    std::string const home = own == nullptr ? "''" : own->pw_dir;
    ::setenv("HOME", "", 1);
    expect_expansions("~ " + home + " ~/ " + home);
    ::unsetenv("HOME");
    expect_expansions("~ " + home + " ~/ " + home);
    run_as(54321, [] { expect_expansions("~ ''  ~/ ''  ~/x ''"); });
    EXPECT_EQ(make_expanded_path(u"\xDC00\xD800", true), u"\xDC00\xD800");
    EXPECT_EQ(make_expanded_path(u"a\xDC00", false), u"a\uFFFD");
}

} // namespace nura::filesystem::test
