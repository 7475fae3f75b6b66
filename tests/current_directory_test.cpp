#include "support.hpp"

#include <sys/syscall.h>

#include <atomic>
#include <thread>

namespace nura::filesystem::test {

TEST(current_directory, is_returned_whole_whatever_its_length)
{
    scene const s;
    // How long its name is, what the system is made to answer to the one call and the other, and
    // what comes of it.
    for (auto const& [length, first, second, outcome] :
         table<4>("1023 ok EIO ok  1024 ok ok ok  2000 ok ok ok  1023 ENOMEM ok ENOMEM "
                  "1023 ERANGE ENOENT ENOENT")) {
        std::string const name = s.at_length(std::stoul(length)).string();
        std::filesystem::create_directories(name);
        std::filesystem::current_path(name);
        hook = [&, errors = std::array{number_of(first), number_of(second)}](
                   auto const&, auto const& size) { return errors[size == "0"]; };
        EXPECT_TRUE(fails_with(outcome, {}, [&] { EXPECT_EQ(get_current_path(), u16(name)); }));
        hook = nullptr;
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
            EXPECT_TRUE(get_current_path().starts_with(s.name("")));
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
    std::atomic<bool> inside = false;
    std::atomic<bool> forked = false;
    std::thread reader{[&] {
        // A converter is opened before and closed after the fork: the C library does that under
        // a lock of its own, which a child inherits as it is.
        (void)get_current_path();
        hook = [&](auto const&, auto const&) { return inside = true, ::usleep(100'000); };
        (void)get_current_path();
        forked.wait(false);
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
    forked = true;
    forked.notify_one();
    reader.join();
}

} // namespace nura::filesystem::test
