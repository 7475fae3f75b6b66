#include "support.hpp"

#include <bit>

namespace nura::filesystem::test {

using namespace std::literals;

TEST(two_names, are_blamed_by_the_rules_of_moves_and_by_those_of_directory_copies)
{
    scene const s;
    for (auto const& [entry, mode] :
         table<2>(R"(open/s 755  open/u 0  open/~/x 777  open/~ 777  open 777
                                                 kept/s 755  closed/s 755  home/x 755  1023 755  1024 755)")) {
        std::filesystem::create_directories(s.at(entry));
        ASSERT_EQ(::chmod(s.at(entry).c_str(), std::stoul(mode, nullptr, 8) & 0777U), 0);
    }
    ::setenv("HOME", s.at("home").c_str(), 1);
    run_as(nobody, [&] {
        s.expect("rename copy copy_directory", R"(
            open/s x >ENOENT >ENOENT >ENOENT          missing x ENOENT * *      closed/s x ENOENT * *
            open/s x >EEXIST >EEXIST >EEXIST          1023 x >EEXIST >EEXIST >EEXIST
            open/s x >ENOTDIR >ENOTDIR ENOTDIR        1024 x EEXIST EEXIST EEXIST
            open/s x >EISDIR >EISDIR EISDIR           1023 x >ENOENT >ENOENT >ENOENT
            open/s x >ENOTEMPTY >ENOTEMPTY ENOTEMPTY  1024 x ENOENT ENOENT ENOENT
            open/s x <EINVAL <EINVAL <EINVAL          1024 x EISDIR EISDIR EISDIR
            open/s x <EOPNOTSUPP <EOPNOTSUPP <EOPNOTSUPP
            1023 x <EROFS <EROFS *                    1024 x EROFS EROFS EROFS
            open/s x <EPERM <EPERM <EPERM             missing x >ENOTEMPTY * *  missing x <ENOSPC * *
            open/s x >EACCES >EACCES >EACCES          closed/s x EACCES * *     missing/s x EACCES * *
            open/u x >EACCES >EACCES EACCES           1023 x EACCES EACCES >EACCES
            kept/s x EACCES EACCES >EACCES            1024 x EACCES EACCES EACCES
            open/s x >ENAMETOOLONG >ENAMETOOLONG >ENAMETOOLONG)",
                 true);
        // The parent of a single relative name is the current directory; that of ~/x, at home.
        hook = [](auto const& call, auto const&) { return call == "rename" ? EACCES : 0; };
        std::filesystem::current_path(s.at("kept"));
        EXPECT_TRUE(fails_with("EACCES", {u"s"}, [] { rename(u"s", u"x"); }));
        std::filesystem::current_path(s.at("open"));
        EXPECT_TRUE(fails_with("EACCES", {u"x"}, [] { rename(u"s", u"x"); }));
        EXPECT_TRUE(
            fails_with("EACCES", {u"~/x"}, [] { rename(path(u"~/x", false), path{u"x"}); }));
        hook = [](auto const& call, auto const&) { return call == "rename" ? -1 : 0; };
        EXPECT_NO_THROW(rename(u"x", u"y")); // a failure without a reason counts as none
    });
}

TEST(copies, refuse_contradictory_options_before_they_look_at_names)
{
    for (unsigned short value = 0; value < 64; ++value) {
        bool const links = (value & 48) == 48;
        bool const contradictory = links || std::popcount(value & 7U) > 1;
        std::string const clash = links ? "copy_symlinks & skip_symlinks"
                                        : "overwrite_if_exists, skip_existing & update_existing";
        std::string const text =
            "Invalid combination selected: " + clash + " cannot be used together";
        std::filesystem::copy_options const options{value};
        auto const all = [=](auto const& p) { nura::filesystem::copy(p, p, options); };
        auto const one = [=](auto const& p) { nura::filesystem::copy_file(p, p, options); };
        for (auto const& call : {both(all, u"\xDC00"s)[0], both(one, u"\xDC00"s)[1]}) {
            EXPECT_EQ(bool{fails<InvalidArgument>(call, {{}, {}, 0, text})}, contradictory)
                << value;
        }
    }
}

TEST(copies_and_links, are_made_or_refused_as_the_standard_library_answers)
{
    scene const s;
    s.expect("copy_file copy copy_directory copy_symlink create_symlink", R"(
        file new ok ok <ENOTDIR -EINVAL ok            to-full new <EINVAL ok * ok ok
        full new <EINVAL ok ok -EINVAL ok             dangling new ENOENT ok ENOENT ok ok
        closed new <EINVAL ok ok -EINVAL ok           missing new ENOENT ENOENT ENOENT -ENOENT ok
        loop new <ELOOP * <ELOOP ok -ELOOP            fifo new <EINVAL <EOPNOTSUPP <ENOTDIR -EINVAL ok
        file/x new >ENOTDIR >ENOTDIR ENOTDIR -ENOTDIR -ENOTDIR
        file full/x >EEXIST >EEXIST ENOTDIR -EINVAL -EEXIST
        file missing/x >ENOENT >ENOENT ENOTDIR -EINVAL -ENOENT
        full file <EINVAL >EISDIR >EEXIST -EINVAL -EEXIST
        full missing/x <EINVAL >ENOENT >ENOENT -EINVAL -ENOENT
        full file/x <EINVAL >ENOTDIR ENOTDIR -EINVAL -ENOTDIR
        to-full missing/x * * >ENOENT -ENOENT -ENOENT  to-full file * * >EEXIST -EEXIST -EEXIST)");
    contents expected = s.all();
    copy_directory(s.name("full"), s.name("empty")); // an existing directory stays as it is
    EXPECT_EQ(s.all(), expected);
    copy_file(s.name("file"), s.name("full/x"), std::filesystem::copy_options::overwrite_existing);
    expected["full/x"] = expected["file"];
    EXPECT_EQ(s.all(), expected);
    hook = [&s](auto const& call, auto const& name) { // a log goes on while it is copied
        std::ofstream{s.at("file"), std::ios::app}
            << (call == "open" && name == s.at("log") ? "+" : "");
        return 0;
    };
    EXPECT_NO_THROW(copy_file(s.name("file"), s.name("log")));
    hook = nullptr;
    EXPECT_LT(file_size(s.at("log")), file_size(s.at("file")));
}

TEST(create_symlink, looks_at_the_target_unless_told_that_it_is_a_directory)
{
    scene const s;
    std::filesystem::current_path(s.at(""));
    ASSERT_EQ(::chmod(s.at("empty").c_str(), 0777), 0);
    ::setenv("HOME", "/h", 1);
    run_as(nobody, [] {
        for (unsigned const type : {0U, 1U, 0x4001U, 0xA000U, 0x4000U}) {
            auto const make = [=] { create_symlink(u"closed/x", u"empty/l", type); };
            EXPECT_TRUE(
                fails_with(type == file_status::directory_file ? "ok" : "EACCES", {}, make));
        }
        create_symlink(path(u"~/x", false), path{u"empty/literal"});
        EXPECT_EQ(std::filesystem::read_symlink("empty/l"), "closed/x");
        EXPECT_EQ(std::filesystem::read_symlink("empty/literal"), "~/x");
    });
}

TEST(space, is_counted_as_the_system_counts_it)
{
    scene const s;
    EXPECT_EQ(space(path{s.name("file")}).capacity, std::filesystem::space(s.at("file")).capacity);
}

} // namespace nura::filesystem::test
