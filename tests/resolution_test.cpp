#include "support.hpp"

#include <regex>

namespace nura::filesystem::test {

using namespace std::literals;

constexpr auto in_full = [](auto const& p, auto const& base) { return absolute(p, base); };
constexpr auto real = [](auto const& p, auto const& base) { return canonical(p, base); };
constexpr auto partly_real = [](auto const& p, auto const&) { return weakly_canonical(p); };
constexpr auto between = [](auto const& p, auto const& base) { return relative(p, base); };

/// A scene that is the current directory and the home directory, with a directory "~" in it. What
/// fails, and further names, are left to the comparison with the slow model.
struct resolution : testing::Test, scene {
    resolution()
    {
        std::filesystem::create_directories(at("full/~"));
        std::filesystem::current_path(at(""));
        ::setenv("HOME", at("").c_str(), 1);
    }

    /// Rows of a pathname, a base and what both overloads make of them; '@' is the directory.
    template <class Resolve>
    void expect(Resolve resolve, std::string const& rows) const
    {
        auto const directory = at("").parent_path().string();
        for (auto const& cells : table<3>(std::regex_replace(rows, std::regex{"@"}, directory))) {
            std::u16string const names[]{u16(cells[0]), u16(cells[1]), u16(cells[2])};
            EXPECT_EQ(resolve(names[0], names[1]), names[2]);
            EXPECT_EQ(resolve(path{names[0]}, path{names[1]}), path{names[2]});
        }
    }
};

TEST_F(resolution, follows_links_dots_and_tildes_in_its_way)
{
    expect(in_full,
           "x /a/ /a/x  x/../~ /a/.. /a/../x/../~  x / /x  /x a/b /x  '' a/b ''  x '' @/x  "
           "~/x a @/x  x ~ @/x");
    expect(real, "'' a/b ''  @/to-full a/b @/full  ..//to-full/./~ @/full/ @/full/~  ~ x @");
    expect(partly_real,
           "'' '' ''  to-full/~/ '' @/full/~  to-full/y '' @/full/y  @/dangling/y '' @/dangling/y  "
           "@/y/../z '' @/z  @/y/. '' @/y/.  y/z '' y/z  /none/../../x '' /../x");
    expect(between, "/a/b/c /a/d ../b/c  @/to-full/y @/z ../full/y  @/full @/to-full .  .. '' ..  "
                    "'' /a ''  x / ''  /none/../../x / ../x  /x /none/../.. ''");
    EXPECT_EQ(relative(u"full/~", u"to-full"), u"~");
    EXPECT_EQ(absolute(path{u"~/x", false}, path{u"/a"}).pathname(), u"/a/~/x");
    failure const bad_base{{}, {}, 0, "Invalid Base Path"};
    EXPECT_TRUE(fails<InvalidArgument>([] { (void)absolute(u"x", u"a/b"); }, bad_base));
    EXPECT_TRUE(fails<InvalidArgument>([] { (void)absolute(path{u"x"}, path{u"a"}); }, bad_base));
    scene::expect("canonical", "dangling - -ENOENT  loop - ELOOP  LONG - ENAMETOOLONG");
}

TEST_F(resolution, reads_the_current_directory_only_where_a_pathname_depends_on_it)
{
    std::filesystem::current_path("empty");
    ASSERT_EQ(::rmdir("../empty"), 0);
    expect(in_full, "x / /x  /x '' /x  '' '' ''");
    expect(partly_real, "x/y '' x/y");
    for (auto const& resolve :
         {both(in_full, u"x"s, u""s), both(real, u"."s, u""s), both(between, u""s, u""s)}) {
        EXPECT_TRUE(fails_with("ENOENT", {}, resolve));
    }
}

} // namespace nura::filesystem::test
