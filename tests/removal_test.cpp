#include "support.hpp"

#include <climits>

namespace nura::filesystem::test {

TEST(directory_creation, makes_a_directory_or_names_it)
{
    scene{}.expect("create_directory create_directories", R"(
        new - ok ok              new/a/b - ENOENT ok        empty - EEXIST EEXIST    to-full - EEXIST EEXIST
        file - EEXIST ENOTDIR    to-file - EEXIST ENOTDIR   fifo - EEXIST ENOTDIR    dangling - EEXIST EEXIST
        file/x - ENOTDIR ENOTDIR file/x/y - ENOTDIR ENOTDIR loop - EEXIST ELOOP      loop/x - ELOOP ELOOP
        LONG - ENAMETOOLONG ENAMETOOLONG)");
}

TEST(removal, takes_what_each_operation_is_for)
{
    scene const s;
    for (std::string const pair :
         {"remove_directory remove_file", "remove_directory remove_symlink", "remove,4000 remove,0",
          "remove,4000 remove,4001"}) {
        s.expect("remove remove_all " + pair, R"(
            file - ok ok ENOTDIR ok                 empty - ok ok ok EISDIR
            to-file - ok ok ENOTDIR ok              full - ENOTEMPTY ok ENOTEMPTY EISDIR
            to-full - ok ok ENOTDIR ok              missing - ENOENT -ENOENT ENOENT ENOENT
            dangling - ok ok ENOTDIR ok             missing/x - ENOENT -ENOENT ENOENT ENOENT
            loop - ok ok ENOTDIR ok                 file/x - ENOTDIR ENOTDIR ENOTDIR ENOTDIR
            fifo - ok ok ENOTDIR ok                 loop/x - ELOOP ELOOP ELOOP ELOOP
            LONG - ENAMETOOLONG ENAMETOOLONG ENAMETOOLONG ENAMETOOLONG)");
        contents const before = s.all();
        // Others' entries are not for taking, and the directory is not for reading.
        ASSERT_EQ(::chmod(s.at("").c_str(), 01733), 0);
        run_as(nobody, [&] {
            s.expect("remove remove_all " + pair,
                     "file - EPERM EPERM EPERM EISDIR  empty - EPERM EPERM EPERM EISDIR "
                     "closed/x - EACCES EACCES EACCES EACCES");
        });
        EXPECT_EQ(s.all(), before);
        s.populate();
    }
}

TEST(remove_all, leaves_to_the_system_the_names_that_it_refuses)
{
    scene const s;
    for (auto const& [name, error] : table<2>(". EINVAL  work/. EINVAL  work/sub/.. ENOENT")) {
        std::filesystem::create_directories(s.at("work/sub/deep"));
        std::filesystem::current_path(s.at(name == "." ? "work" : ""));
        EXPECT_TRUE(fails_with(error, {u16(name)}, [p = u16(name)] { remove_all(p); }));
        EXPECT_TRUE(listing(s.at("work")).empty()) << name;
    }
    ASSERT_EQ(::chmod(s.at("work").c_str(), 0777), 0);
    run_as(54321, [&] { // without a home directory an appended tilde leaves a separator at the end
        ::unsetenv("HOME");
        std::filesystem::create_directories(s.at("work/sub/deep"));
        remove_all(path{s.name("work/sub")} / u"~");
        EXPECT_TRUE(listing(s.at("work")).empty());
    });
}

TEST(remove_all, takes_no_name_that_is_too_long_in_one_piece)
{
    scene const s;
    std::string const last(20, 'x');
    std::ofstream{s.at(last)};
    std::string parent = s.at("").string();
    while (parent.size() + last.size() < PATH_MAX) {
        parent += "./";
    }
    std::string const name = parent + last; // while the name of the parent is short enough
    EXPECT_TRUE(fails_with("ENAMETOOLONG", {u16(name)}, [&] { remove_all(u16(name)); }));
    EXPECT_TRUE(std::filesystem::exists(s.at(last)));
}

} // namespace nura::filesystem::test
