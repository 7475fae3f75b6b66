#include "support.hpp"

#include <boost/thread/thread.hpp>

#include <sys/resource.h>

#include <set>

namespace nura::filesystem::test {

/// Makes outer/top/mid/leaf, with `files` files in each directory from top on, in place of what
/// is there.
static void build(std::filesystem::path const& place, int files)
{
    std::filesystem::remove_all(place);
    std::filesystem::create_directories(place / "outer/top/mid/leaf");
    for (int i = 0; i < files; ++i) {
        for (auto const* name : {"outer/top/a", "outer/top/mid/b", "outer/top/mid/leaf/c"}) {
            std::ofstream{place / (name + std::to_string(i))} << "text";
        }
    }
}

/// Moves `entry` of "work" aside, unless it has gone already, and puts a "link" to its twin in
/// "outside", a "directory", a "file" or "nothing" in its place.
static void swap(temporary_root const& root, std::string const& entry,
                 std::string const& replacement)
{
    auto const place = root.at("work/" + entry);
    if (::rename(place.c_str(), root.at("work/aside").c_str()) != 0) {
        return;
    }
    if (replacement == "link") {
        std::filesystem::create_symlink(root.at("outside/" + entry), place);
    } else if (replacement == "directory") {
        std::filesystem::create_directory(place);
    } else if (replacement == "file") {
        std::ofstream{place};
    }
}

TEST(tree_removal, loses_nothing_outside_whatever_happens_before_any_system_call)
{
    std::ptrdiff_t const descriptors = open_descriptors();
    // What takes the place of which entry, and the only error that may come of it; or an error
    // that the call answers.
    for (auto const& [what, entry, error] : table<3>(R"(
             link outer ok                   link outer/top/mid ENOTDIR     link outer/top/a1 ok
             directory outer/top/mid EISDIR  file outer/top/mid/leaf ENOTDIR
             nothing outer/top/mid ENOENT    nothing outer/top/mid/leaf/c0 ENOENT
             call - EMFILE                   call - EIO)")) {
        std::set<std::string> outcomes;
        bool reached = true;
        // Before the first call the name of top still means what it leads to then.
        for (int moment = entry == "outer" ? 1 : 0; reached; ++moment) {
            SCOPED_TRACE(what + ' ' + entry + " before call " + std::to_string(moment));
            temporary_root const root{elsewhere};
            build(root.at("work"), 2);
            build(root.at("outside"), 2);
            contents const outside = listing(root.at("outside"));
            int calls = 0;
            hook = [&, &w = what, &e = entry, number = number_of(error)](auto&&...) {
                bool const now = calls++ == moment;
                now&& w != "call" ? swap(root, e, w) : void();
                return now && w == "call" ? number : 0;
            };
            std::filesystem::path blamed;
            std::string result = "ok";
            try {
                remove_all(root.name("work/outer/top"));
            } catch (FsysExceptionBase const& failure) {
                blamed = failure.pathname();
                result = error;
                EXPECT_TRUE(fails_with(error, {blamed.u16string()}, [] { throw; }));
            }
            hook = nullptr;
            contents const all = listing(root.at("work"));
            EXPECT_TRUE(result != "ok" ||
                        !(all.contains("outer/top") || all.contains("aside/top")));
            EXPECT_TRUE(blamed.empty() ||
                        outside.contains(blamed.lexically_relative(root.at("work"))));
            EXPECT_EQ(listing(root.at("outside")), outside);
            EXPECT_TRUE(result != "ok" || what != "call" || calls <= moment);
            outcomes.insert(result);
            reached = calls > moment;
        }
        EXPECT_EQ(outcomes, (std::set<std::string>{"ok", error}));
    }
    EXPECT_EQ(open_descriptors(), descriptors);
}

/// Removes as a program does that knows nothing of descriptors: every call by the full pathname.
static void walk_by_full_pathnames(std::string const& directory)
{
    std::error_code ignored;
    for (auto const& entry : std::filesystem::directory_iterator{directory, ignored}) {
        if (!entry.is_symlink(ignored) && entry.is_directory(ignored)) {
            walk_by_full_pathnames(entry.path().string());
        } else {
            ::unlinkat(AT_FDCWD, entry.path().c_str(), 0);
        }
    }
    ::rmdir(directory.c_str());
}

/// How many files outside are lost in `rounds` removals of the tree, while another thread
/// exchanges a directory of it, or one above it, for a link to its twin outside and back, from the
/// first removal of an entry to the end.
static std::ptrdiff_t files_lost(unsigned rounds, auto const& remove_tree)
{
    temporary_root const root{elsewhere};
    std::ptrdiff_t lost = 0;
    for (unsigned round = 0; round < rounds; ++round) {
        std::string const entry =
            std::array{"outer", "outer/top/mid", "outer/top/mid/leaf"}[round % 3];
        build(root.at("work"), 12);
        build(root.at("outside"), 12);
        auto const files = std::ssize(listing(root.at("outside")));
        std::filesystem::create_symlink(root.at("outside/" + entry), root.at("work/link"));
        enum { waiting, started, swapping, ended };
        std::atomic<int> phase = waiting;
        std::thread swapper{[&, from = root.at("work/link"), to = root.at("work/" + entry)] {
            for (int is = phase; is != ended; is = phase) {
                if (is != waiting) {
                    ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE);
                    phase.compare_exchange_strong(is = started, swapping);
                }
            }
        }};
        hook = [&](std::string const& call, std::string const&) {
            int idle = call == "unlinkat" ? waiting : ended;
            phase.compare_exchange_strong(idle, started);
            while (phase == started) {
                std::this_thread::yield();
            }
            return 0;
        };
        try {
            remove_tree(root.at("work/outer/top").string());
        } catch (FsysExceptionBase const&) { // it may give up
        }
        hook = nullptr;
        phase = ended;
        swapper.join();
        lost += files - std::ssize(listing(root.at("outside")));
    }
    return lost;
}

TEST(tree_removal, loses_nothing_outside_to_another_thread_that_swaps_directories_for_links)
{
    unsigned const rounds = long_run ? 2000 : 200;
    EXPECT_EQ(files_lost(rounds, [](std::string const& top) { remove_all(u16(top)); }), 0);
    // The same rounds are a danger to a walk that takes no care.
    auto const lost = files_lost(rounds, walk_by_full_pathnames);
    EXPECT_GT(lost, 0);
    RecordProperty("files_lost_by_a_walk_by_full_pathnames", std::to_string(lost));
}

/// Makes in a new tree a chain of `depth` directories called `name`, each beside `files` files,
/// and removes the tree on a thread with a stack of 256 KiB.
static void make_and_remove(std::string const& name, int depth, int files)
{
    temporary_root const root{elsewhere};
    std::filesystem::create_directory(root.at("top"));
    std::filesystem::current_path(root.at("top"));
    for (int level = 0; level < depth; ++level) {
        for (int i = 0; i < files; ++i) {
            ASSERT_EQ(::mknod((name + '\xFF' + std::to_string(i)).c_str(), S_IFREG, 0), 0);
        }
        std::filesystem::create_directory(name);
        std::filesystem::current_path(name);
    }
    std::filesystem::current_path("/");
    std::ptrdiff_t const descriptors = open_descriptors();
    boost::thread::attributes small;
    small.set_stack_size(256 * 1024);
    boost::thread{small, [&] { remove_all(root.name("top")); }}.join();
    EXPECT_EQ(open_descriptors(), descriptors);
    EXPECT_FALSE(std::filesystem::exists(root.at("top")));
}

TEST(tree_removal, takes_deep_trees_many_entries_and_names_that_are_no_text)
{
    run_as(::geteuid(), [] {
        rlimit const limit{6000, 20'000};
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) {
            GTEST_SKIP() << "6000 descriptors are not to be had";
        }
        make_and_remove("d", 5000, 1);
        make_and_remove("\xED\xA0\x80\xC3", 2, long_run ? 50'000 : 5'000);
    });
}

} // namespace nura::filesystem::test
