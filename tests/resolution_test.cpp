#include "support.hpp"

#include <filesystem/operations.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <regex>

namespace nura::filesystem::test {
namespace {

using name = std::u16string;

constexpr auto in_full = [](auto const& p, auto const& base) { return absolute(p, base); };
constexpr auto real = [](auto const& p, auto const& base) { return canonical(p, base); };
constexpr auto partly_real = [](auto const& p, auto const&) { return weakly_canonical(p); };
constexpr auto between = [](auto const& p, auto const& base) { return relative(p, base); };

/// A directory that is the current one and the home directory, with links and a directory "~".
class resolution : public testing::Test {
protected:
    resolution()
    {
        std::filesystem::create_directories(root.at("full/~"));
        std::filesystem::create_directory_symlink("full", root.at("link"));
        std::filesystem::create_symlink("nowhere", root.at("dangling"));
        std::filesystem::create_symlink("loop", root.at("loop"));
        std::filesystem::current_path(root.at(""));
        ::setenv("HOME", root.at("").c_str(), 1);
    }

    /// Rows of a pathname, a base and what both overloads make of them; '@' is the directory.
    template <class Resolve>
    void expect(Resolve resolve, std::string const& rows) const
    {
        auto const directory = root.at("").parent_path().string();
        for (auto const& cells : table<3>(std::regex_replace(rows, std::regex{"@"}, directory))) {
            name const names[]{u16(cells[0]), u16(cells[1]), u16(cells[2])};
            EXPECT_EQ(resolve(names[0], names[1]), names[2]);
            path const found = resolve(path{names[0]}, path{names[1]});
            EXPECT_TRUE(found == path{names[2]} && found.expand_tilde()) << found;
        }
    }

    /// Expects that both overloads throw an `Exception` that reports `expected`.
    template <class Exception, class Resolve>
    void refused(Resolve resolve, name const& p, name const& base,
                 failure const& expected = {}) const
    {
        EXPECT_TRUE(fails<Exception>([&] { (void)resolve(p, base); }, expected));
        EXPECT_TRUE(fails<Exception>([&] { (void)resolve(path{p}, path{base}); }, expected));
    }

    state_of_process const state;
    temporary_root const root;
};

TEST_F(resolution, follows_links_dots_and_tildes_in_its_way)
{
    expect(in_full,
           "x /a/ /a/x  x/../~ /a/.. /a/../x/../~  x / /x  /x a/b /x  '' a/b ''  x '' @/x  "
           "~/x a @/x  x ~ @/x");
    expect(real,
           "'' a/b ''  @/link a/b @/full  . '' @  ..//link/./~ @/full/ @/full/~  / x /  ~ x @");
    expect(partly_real,
           "'' '' ''  link/~/ '' @/full/~  link/y '' @/full/y  @/link/y '' @/full/y  "
           "@/dangling/y '' @/dangling/y  @/x/../y '' @/y  @/x/. '' @/x/.  @/x/ab/.. '' @/x  "
           "@/x/.a/.. '' @/x/.a/..  x/y '' x/y  /none/../../x '' /../x  @/~none/x '' @/~none/x");
    expect(
        between,
        "/a/b/c /a/d ../b/c  @/link/x @/y ../full/x  @/full @/link .  link '' full  "
        ".. '' ..  '' /a ''  x '' ''  x / ''  /none/../../x / ../x  /none/.a/../x /none .a/../x  "
        "/x /none/../../y x  /x /none/../.. ''");
    EXPECT_EQ(relative(u"full/~", u"link"), u"~");
    EXPECT_EQ(relative(path{u"full/~"}, path{u"link"}), path{u"~"});
    EXPECT_EQ(absolute(path{u"~/x", false}, path{u"/a"}).pathname(), u"/a/~/x");
    name const refused_name = root.name("link") + name(1, u'\0');
    EXPECT_EQ(weakly_canonical(refused_name), refused_name);
}

TEST_F(resolution, names_what_failed_unless_it_is_missing)
{
    name const at = root.name("");
    failure const bad_base{{}, {}, 0, "Invalid Base Path"};
    failure const absolute_element{{}, {}, 0, "Absolute path not permitted"};
    refused<InvalidArgument>(in_full, u"x", u"a/b", bad_base);
    refused<InvalidArgument>(real, u"full", u"~none", bad_base);
    refused<InvalidArgument>(partly_real, u"full/~/x", u"", absolute_element);
    refused<PathNotFound>(real, u"dangling", u"");
    refused<PathNotFound>(real, u"full", u"/\xD800");
    refused<InvalidArgument>(real, name(1, u'\0'), at, {at + name(1, u'\0'), {u""}});
    refused<SystemError>(real, u"loop/x", u"", {at + u"loop/x", {u""}, ELOOP});
    refused<SystemError>(partly_real, u"loop/x", u"", {u"loop/x", {u""}, ELOOP});
    refused<SystemError>(between, u"", u"loop", {u"loop", {u""}, ELOOP});
    EXPECT_EQ(::chmod("full", 0), 0);
    run_as(nobody, [&] { refused<AccessDenied>(real, u"link/x", at, {at + u"link/x"}); });
}

TEST_F(resolution, reads_the_current_directory_only_where_a_pathname_depends_on_it)
{
    std::filesystem::create_directories("\xFF/x");
    std::filesystem::current_path("\xFF");
    EXPECT_EQ(canonical(u"x"), root.name("") + u"\uFFFD/x");
    ASSERT_TRUE(::rmdir("x") == 0 && ::rmdir("../\xFF") == 0);
    expect(in_full, "x / /x  /x '' /x  '' '' ''");
    expect(partly_real, "x/y '' x/y");
    refused<PathNotFound>(in_full, u"x", u"");
    refused<PathNotFound>(real, u".", u"");
    refused<PathNotFound>(between, u"", u"");
}

TEST_F(resolution, returns_canonical_names_of_any_length_whole)
{
    for (std::size_t const length : {1024U, 1025U, 2000U, 4000U}) {
        std::string deep = root.at("d").string();
        while (deep.size() < length) {
            deep += deep.size() % 200 == 1 ? '/' : 'd';
        }
        std::filesystem::create_directories(deep);
        std::filesystem::remove("link");
        std::filesystem::create_directory_symlink(deep, "link");
        expect(real, "link '' " + deep + ' ' + deep + " '' " + deep);
        expect(partly_real, "@/link/x '' " + deep + "/x");
    }
    // A name that a shorter one leads to, but that is itself too long to be asked for.
    std::filesystem::create_directory("link/" + std::string(200, 'd'));
    name const beyond = u"link/" + name(200, u'd');
    refused<FileNameTooLarge>(real, beyond, u"", {root.name("") + beyond});
}

} // namespace
} // namespace nura::filesystem::test
