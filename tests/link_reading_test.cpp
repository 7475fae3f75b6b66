#include "support.hpp"

namespace nura::filesystem::test {

TEST(links, are_read_whole_whatever_their_length)
{
    scene const s;
    int reads = 0;
    hook = [&](auto const& call, auto const& name) {
        reads += call == "readlink";
        return name == s.at("loop") ? -1 : 0;
    };
    for (std::size_t const length : {1U, 1023U, 1024U, 1025U, 4095U}) {
        auto const link = s.at("link of " + std::to_string(length));
        if (::symlink(std::string(length, 't').c_str(), link.c_str()) != 0) {
            GTEST_SKIP() << "no link of " << length << " bytes here";
        }
        reads = 0;
        EXPECT_EQ(read_symlink(link.u16string()), std::u16string(length, u't'));
        EXPECT_EQ(reads, length / 1024 + 1) << length;
    }
    EXPECT_TRUE(
        fails<SystemError>([&] { (void)read_symlink(s.name("loop")); }, {s.name("loop"), {u""}}));
    hook = nullptr;
}

TEST(links, are_read_as_they_are_stored_or_as_paths)
{
    scene const s;
    ::setenv("HOME", s.at("").c_str(), 1);
    for (auto const& [stored, as_path] : table<2>("a/b a/b  /a//../b/ /a/../b  ~ ~  \xFF \uFFFD")) {
        std::filesystem::remove(s.at("loop"));
        std::filesystem::create_symlink(stored, s.at("loop"));
        EXPECT_EQ(read_symlink(u"~//loop/"), detail::from_filesystem(stored));
        path const text = read_symlink(path{u"~/loop"});
        EXPECT_TRUE(text == path{detail::from_filesystem(as_path)} && text.expand_tilde()) << text;
    }
    s.expect("read_symlink",
             "file - EINVAL  missing - ENOENT  file/x - ENOTDIR  LONG - ENAMETOOLONG");
    run_as(nobody, [&] { s.expect("read_symlink", "closed/x - EACCES"); });
}

/// A directory that is the current one and the home directory, with one called "~" in it.
struct equivalence : testing::Test, scene {
    equivalence()
    {
        std::filesystem::create_directories(at("~/closed"));
        std::filesystem::current_path(at(""));
        std::filesystem::create_hard_link("file", "hard");
        ::setenv("HOME", at("").c_str(), 1);
        EXPECT_EQ(::chmod("~/closed", 0), 0);
    }
};

TEST_F(equivalence, is_that_of_names_that_lead_to_one_file)
{
    for (auto const& [p1, p2, by_string, by_path] :
         table<4>("file hard 1 1  hard ./~/..//to-file 1 1  file ~ 0 0  file file/ 0 1 "
                  "file ~/file 0 1  file missing 0 0  loop file 0 0  file '' 0 0")) {
        EXPECT_EQ(equivalent(u16(p1), u16(p2)), by_string == "1") << p1 << p2;
        EXPECT_EQ(equivalent(u16(p2), u16(p1)), by_string == "1") << p1 << p2;
        EXPECT_EQ(equivalent(path{u16(p1)}, path{u16(p2)}), by_path == "1") << p1 << p2;
    }
    EXPECT_FALSE(equivalent(u"\xD800", u"") || equivalent(u"\xD800", u"file"));
    EXPECT_TRUE(fails<InvalidArgument>([] { (void)equivalent(u"", u""); }, empty_refused));
    EXPECT_TRUE(fails<PathNotFound>([] { (void)equivalent(u"\xD800", u"a\xD800"); }));
}

TEST_F(equivalence, carries_low_bytes_where_neither_name_can_be_compared)
{
    // Two names, the error, and what it carries; '#' is U+0000. Where the first is there and can
    // be read in native form, the other is to blame.
    std::string const most(1024, 'n');
    for (auto row :
         table<5>("\u4E2D loop ENOENT - ''       \u00E9\u01C3\u01A9 missing ENOENT \uFFFD\u00E9 '' "
                  "file/\u4E2D missing ENOTDIR file/- ''  loop \u4E2D ELOOP loop -  "
                  "\u4E2D# \u00E9 EINVAL -# \uFFFD        file file# EINVAL file file#  "
                  "~/file \u4E2D ENOENT - ''  ~/closed/\u4E2D missing EACCES ~/closed/- ''  " +
                  most + " \u4E2D ENAMETOOLONG " + most + " ''")) {
        std::array<std::u16string, 5> text;
        std::transform(row.begin(), row.end(), text.begin(), [](std::string& cell) {
            std::replace(cell.begin(), cell.end(), '#', '\0');
            return detail::from_filesystem(cell);
        });
        overloads const calls{
            [&] { (void)equivalent(text[0], text[1]); },
            [&] { (void)equivalent(path(text[0], false), path(text[1], false)); }};
        run_as(nobody, [&] { EXPECT_TRUE(fails_with(row[2], {text[3], text[4]}, calls)); });
    }
}

} // namespace nura::filesystem::test
