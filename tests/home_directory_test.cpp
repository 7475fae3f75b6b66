#include "support.hpp"

#include <filesystem/pathname_grammar.hpp>

#include <pwd.h>

#include <algorithm>
#include <cerrno>

namespace {

/// What every look-up in the password file answers.
struct {
    int result;
    bool found;
    char const* directory;
} answer;

int look_up(bool known, passwd* entry, std::size_t size, passwd** found)
{
    EXPECT_EQ(size, 1024U);
    entry->pw_dir = const_cast<char*>(answer.directory);
    *found = known && answer.found ? entry : nullptr;
    return answer.result;
}

} // namespace

extern "C" int getpwuid_r(uid_t id, passwd* entry, char*, std::size_t size, passwd** found)
{
    return look_up(id == ::getuid(), entry, size, found);
}

extern "C" int getpwnam_r(char const* name, passwd* entry, char*, std::size_t size, passwd** found)
{
    return look_up(name == std::string{"bob"}, entry, size, found);
}

namespace nura::filesystem::test {
namespace {

using namespace detail;

/// Each row: a name and what it becomes; '#' stands for U+0000.
void expect_expansions(std::string rows)
{
    std::replace(rows.begin(), rows.end(), '#', '\0');
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
    state_of_process const kept;
    answer = {0, true, "/pw"};
    ::setenv("HOME", "/h/u", 1);
    expect_expansions(
        "'' ''  x x  /x /x  /~ /~  a/~b a/~b  ~ /h/u  ~/ /h/u  ~/x// /h/u/x//  "
        "~//x /h/u//x  ~bob /pw  ~bob/ /pw/  ~bob//x /pw//x  ~bob#/x ~bob#/x  ~/a#b /h/u/a#b");
    ::setenv("HOME", "~u/", 1);
    expect_expansions("~ ~u/  ~/ ~u/  ~/x ~u//x");
    ::setenv("HOME", "", 1);
    expect_expansions("~ /pw  ~/ /pw  ~/x /pw/x");
    ::unsetenv("HOME");
    expect_expansions("~ /pw  ~/ /pw  ~/x /pw/x");
    EXPECT_EQ(make_expanded_path(u"\xDC00\xD800", true), u"\xDC00\xD800");
    EXPECT_EQ(make_expanded_path(u"a\xDC00", false), u"a\uFFFD");
    for (decltype(answer) const none : {decltype(answer){0, true, nullptr},
                                        {0, true, ""},
                                        {0, false, "/stale"},
                                        {ERANGE, true, "/stale"}}) {
        answer = none;
        expect_expansions("~ ''  ~/ ''  ~/x ''  ~bob ~bob  ~bob/x ~bob/x");
    }
}

} // namespace
} // namespace nura::filesystem::test
