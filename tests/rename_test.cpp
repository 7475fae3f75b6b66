#include "support.hpp"

#include <sys/mount.h>

namespace nura::filesystem::test {

using namespace std::literals;

/// Runs `body` in a forked child whose mounts no other process sees, and which end with it; skips
/// where the process may not mount. `read_only` cannot be written there.
static void run_with_own_mounts(std::string const& read_only, std::function<void()> const& body)
{
    run_as(::geteuid(), [&, name = read_only.c_str()] {
        if (::unshare(CLONE_NEWNS) + ::mount("", "/", "", MS_REC | MS_PRIVATE, "") != 0) {
            GTEST_SKIP() << "no mounts of its own";
        }
        ASSERT_EQ(::mount(name, name, "", MS_BIND, ""), 0);
        ASSERT_EQ(::mount("", name, "", MS_BIND | MS_REMOUNT | MS_RDONLY, ""), 0);
        body();
    });
}

/// A scene on another file system beside a tree whose links lead out of it, to other files
/// wherever it is moved.
struct moves : testing::Test, scene {
    void SetUp() override
    {
        populate();
        there.populate();
        std::filesystem::create_directories(at("tree/sub/deep\xFF"));
        for (auto const* file : {"tree/large", "tree/sub/deep\xFF/\xE4\xB8", "target"}) {
            std::ofstream{at(file)} << std::string(50'000, 'x');
            std::filesystem::last_write_time(at(file), old);
        }
        std::ofstream{there.at("target")} << "newer";
        std::filesystem::create_symlink("../target", at("tree/link"));
        std::filesystem::create_directory_symlink("../", at("tree/sub/\xFE"));
        std::filesystem::permissions(at("tree/sub"), std::filesystem::perms{01755});
        tree = listing(at("tree"));
        if (::link(at("file").c_str(), there.at("linked").c_str()) == 0) {
            GTEST_SKIP() << "no other file system to write to";
        }
    }

    bool is_old(std::string const& entry) const { return last_write_time(there.at(entry)) == old; }

    /// Expects that `from` is not moved to `to` there, whoever is blamed, and is whole.
    void refuse(std::string const& outcome, std::string const& from, std::string const& to) const
    {
        auto const blamed = outcome[0] == '>' ? there.name(to) : name(from);
        for (auto const& call : operations.at("rename")(name(from), there.name(to))) {
            contents const before = all();
            auto const error = outcome.substr(outcome[0] == '>');
            EXPECT_TRUE(fails_with(error, {blamed, there.name(to)}, call)) << from << to;
            EXPECT_EQ(all(), before);
            to.ends_with("new") ? std::filesystem::remove_all(there.at(to)) : 0; // a part of it
        }
    }

    scene const there{elsewhere};
    std::filesystem::file_time_type old{std::chrono::nanoseconds{-5'000'000'000'123'456'789}};
    contents tree;
};

TEST_F(moves, take_an_entry_along_or_say_which_of_two_names_is_to_blame)
{
    for (auto const& [from, to, outcome] : table<3>(R"(
             fifo new EOPNOTSUPP      file full/x >EEXIST    file to-full >EEXIST
             to-full dangling >EEXIST file full >EISDIR      to-full empty >EISDIR
             empty full >ENOTEMPTY    full file >ENOTDIR     full to-full >ENOTDIR
             missing missing/x ENOENT missing empty ENOENT   file missing/x >ENOENT
             file/x new >ENOTDIR      full file/x >ENOTDIR   file LONG >ENAMETOOLONG
             full/. new EBUSY         full empty/. EBUSY     full/.. new EBUSY)")) {
        contents const before = there.all();
        refuse(outcome, from, to);
        EXPECT_EQ(there.all(), before);
    }
    expect("rename", R"(
        full new ok          full empty ok        to-full new ok       file full/x ok
        file to-full ok      file empty >EISDIR   empty full >ENOTEMPTY  full full/new <EINVAL
        full/. new <EBUSY    missing missing/x ENOENT  file missing/x >ENOENT)");
}

TEST_F(moves, carry_trees_with_times_on_request_and_touch_nothing_else)
{
    for (std::size_t i = 0; i < 4; ++i) {
        auto const move = [=](auto const& a, auto const& b) { rename(a, b, {i < 2}); };
        auto const& moved = i % 2 == 0 ? "empty" : "new"; // an empty directory takes the contents
        both(move, name("tree"), there.name(moved))[i % 2]();
        EXPECT_TRUE(listing(there.at(moved)) == tree && !std::filesystem::exists(at("tree")));
        EXPECT_EQ(is_old(moved + "/large"s), i < 2);
        EXPECT_EQ(is_old(moved + "/sub/deep\xFF/\xE4\xB8"s), i < 2);
        EXPECT_FALSE(is_old("target") || last_write_time(at("target")) != old);
        both(move, name("target"), there.name("single"))[i % 2]();
        EXPECT_EQ(is_old("single"), i < 2);
        SetUp();
    }
    rename(name("tree"), name("moved")); // within one file system, too, whatever the bytes
    EXPECT_EQ(listing(at("moved")), tree);
}

TEST_F(moves, lose_nothing_when_they_fail)
{
    ASSERT_EQ(::chmod(there.at("").c_str(), 0777), 0);
    auto const leave_both = [&] { // the source may not be removed
        EXPECT_TRUE(fails<SystemError>([&] { rename(name("tree"), there.name("copy")); },
                                       {name("tree"), {there.name("copy")}}));
        EXPECT_TRUE(listing(at("tree")) == tree && listing(there.at("copy")) == tree);
        std::filesystem::remove_all(there.at("copy"));
    };
    run_as(nobody, leave_both);
    run_with_own_mounts(at(""), leave_both);
    run_with_own_mounts(there.at(""), [&] { refuse("EROFS", "tree", "new"); });
    hook = [](auto const& call, auto const&) { return call == "utimensat" ? EPERM : 0; };
    EXPECT_THROW(rename(name("tree"), there.name("x"), rename_options{true}),
                 std::filesystem::filesystem_error);
    hook = nullptr;
    EXPECT_TRUE(listing(at("tree")) == tree && listing(there.at("x")) == tree);
    run_with_own_mounts(at("closed"), [&, room = there.at("empty")] {
        ASSERT_EQ(::mount("tmpfs", room.c_str(), "tmpfs", 0, "size=16k"), 0);
        refuse("EBUSY", "closed", "empty/new");
        // Without sendfile the standard library loses the error behind the first block.
        hook = [](auto const& call, auto const&) { return call == "sendfile" ? EINVAL : 0; };
        refuse("EIO", "tree/large", "empty/new");
        for (auto const& [copy, to] :
             table<2>("copy_file empty/large copy empty/large copy empty")) {
            named const names{name("tree/large"), there.name(to)};
            EXPECT_TRUE(
                fails_with("EIO", names, operations.at(copy)(names.first, names.second)[0]));
            std::filesystem::remove(there.at("empty/large"));
        }
        hook = nullptr;
        ASSERT_FALSE(::umount(room.c_str()) +
                     ::mount(at("").c_str(), room.c_str(), "", MS_BIND, ""));
        refuse("EINVAL", "full", "empty/full/new"); // the target is in the source, or is the source
        std::filesystem::create_directory(at("full/new"));
        refuse("EINVAL", "full", "empty/full/new");
        refuse("EINVAL", "tree", "empty/tree/sub/new");
        std::filesystem::current_path(room / "full");
        EXPECT_TRUE(
            fails_with("EINVAL", {name("full"), u"x"}, [&] { rename(name("full"), u"x"); }));
        refuse(">EEXIST", "file", "empty/file");
        refuse(">EEXIST", "empty", "empty/empty");
    });
    hook = [](auto const& call, auto const& entry) { // somebody else is faster
        return call == "mkdir" && entry.ends_with("/sub") ? ::mkdir(entry.c_str(), 0777) : 0;
    };
    named const tree_and_y{name("tree"), there.name("y")};
    EXPECT_TRUE(fails_with("EIO", tree_and_y, [&] { rename(name("tree"), there.name("y")); }));
    hook = nullptr;
    EXPECT_EQ(listing(at("tree")), tree);
    ASSERT_EQ(::chmod(at("tree/large").c_str(), 0), 0);
    run_as(nobody, [&] { refuse("EACCES", "tree", "new"); });
    ASSERT_EQ(::chmod(at("").c_str(), 0777) + ::mkfifo(at("full/fifo").c_str(), 0600), 0);
    run_as(nobody, [&] { refuse(">EACCES", "tree", "new"); });
    refuse("EOPNOTSUPP", "full", "new");
}

} // namespace nura::filesystem::test
