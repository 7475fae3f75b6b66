#include "operation_cases.hpp"

#include <sys/syscall.h>

#include <atomic>
#include <thread>

namespace nura::filesystem::test {

TEST(current_directory, is_read_in_native_form_after_each_change_and_stays_after_a_failure)
{
    scene const s;
    std::filesystem::create_directories(s.at("~/sub"));
    std::filesystem::create_directories(s.at("home/\xC3\xA9\xFF"));
    ::setenv("HOME", s.at("home").c_str(), 1);
    for (auto const& [name, expected] : table<2>("~ home  sub ~/sub  .. ''  ../to-full// full")) {
        std::filesystem::current_path(s.at("~"));
        EXPECT_TRUE(change_current_path(u16(name)));
        EXPECT_EQ(get_current_path(), path{s.name(expected)}.pathname());
    }
    std::filesystem::current_path(s.at("home/\xC3\xA9\xFF"));
    EXPECT_EQ(get_current_path(), s.name("home/") + u"\u00E9\uFFFD");
    change_current_path(path{s.name("")});
    change_current_path(path(u"~/sub", false));
    s.expect("change_current_path",
             "missing - ENOENT  file - ENOTDIR  loop - ELOOP  LONG - ENAMETOOLONG");
    EXPECT_EQ(get_current_path(), s.name("~/sub"));
}

TEST(current_directory, is_returned_whole_whatever_its_length)
{
    scene const s;
    // How long its name is, what the system is made to answer to the one call and the other, and
    // the sizes that it is asked for.
    for (auto const& row : table<4>(R"(
             1023 ok - 1024      1024 ok ok 1024,0      2000 ok ok 1024,0           1023 EACCES - 1024
             1023 ENOMEM - 1024  1023 ERANGE ENOMEM 1024,0  1023 ERANGE ENOENT 1024,0)")) {
        std::string const name = s.at_length(std::stoul(row[0])).string();
        std::filesystem::create_directories(name);
        std::filesystem::current_path(name);
        std::string sizes;
        hook = [&](std::string const&, std::string const& size) {
            sizes += sizes.empty() ? size : ',' + size;
            return number_of(row[size == "0" ? 2 : 1]);
        };
        auto const read = [&] { EXPECT_EQ(get_current_path(), u16(name)); };
        EXPECT_TRUE(fails_with(row[row[1] == "ERANGE" ? 2 : 1], {}, read));
        hook = nullptr;
        EXPECT_EQ(sizes, row[3]);
    }
}

TEST(current_directory, is_changed_and_read_by_one_thread_at_a_time)
{
    scene const s;
    std::atomic<int> inside = 0;
    auto const work = [&](std::u16string const& own) {
        hook = [&](std::string const&, std::string const&) {
            EXPECT_EQ(inside++, 0);
            std::this_thread::yield();
            return --inside;
        };
        for (int i = 0; i < 2000; ++i) {
            EXPECT_TRUE(change_current_path(own));
            EXPECT_TRUE(std::u16string{u"empty full"}.find(
                            get_current_path().substr(s.name("").size())) != own.npos);
            EXPECT_THROW(change_current_path(s.name("file")), NotDirectoryError);
        }
    };
    std::filesystem::current_path(s.at("empty"));
    std::thread other{work, s.name("empty")};
    std::thread{work, s.name("full")}.join();
    other.join();
}

TEST(current_directory, can_be_used_in_a_child_forked_while_a_thread_reads_it)
{
    (void)exists(get_current_path());
    for (int i = 0; i < 20 && !testing::Test::HasFailure(); ++i) {
        std::atomic<bool> inside = false;
        std::thread reader{[&] {
            // The first call opens the converter, whose lock the C library forks as it is.
            (void)get_current_path();
            hook = [&](auto const&, auto const&) { return inside = true, ::usleep(10'000); };
            (void)get_current_path();
        }};
        while (!inside) {
            std::this_thread::yield();
        }
        run_as(::geteuid(), [] {
            ::alarm(30); // where the lock was forked while it was held
            EXPECT_TRUE(change_current_path(u"/") && get_current_path() == u"/");
            // Past the thread sanitizer, to which the reader of the parent is a leak of the child.
            ::syscall(SYS_exit_group, testing::Test::HasFailure() ? 1 : 0);
        });
        reader.join();
    }
}

} // namespace nura::filesystem::test
