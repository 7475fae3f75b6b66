#include "operation_cases.hpp"

#include <boost/thread/thread.hpp>

namespace nura::filesystem::test {

/// Makes in a new tree a chain of `depth` directories called `name`, each beside `files` files,
/// and removes the tree on a thread with a stack of 256 KiB: in vain while there are few
/// descriptors, and then.
static void make_and_remove(std::string const& name, int depth, int files)
{
    temporary_root const root{"/dev/shm"};
    std::filesystem::create_directory(root.at("top"));
    int directory = ::open(root.at("top").c_str(), O_PATH | O_CLOEXEC);
    for (int level = 0; level < depth; ++level) {
        for (int i = 0; i < files; ++i) {
            auto const file = name + '\xFF' + std::to_string(i);
            ASSERT_EQ(::mknodat(directory, file.c_str(), S_IFREG, 0), 0);
        }
        ASSERT_EQ(::mkdirat(directory, name.c_str(), 0777), 0);
        int const next = ::openat(directory, name.c_str(), O_PATH | O_CLOEXEC);
        ::close(std::exchange(directory, next));
    }
    ::close(directory);
    std::ptrdiff_t const descriptors = open_descriptors();
    boost::thread::attributes small;
    small.set_stack_size(256 * 1024);
    for (rlim_t limit = depth > 100 ? 100 : 6000; limit <= 6000; limit += 5900) {
        rlimit const now{limit, 20'000};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &now), 0);
        boost::thread worker{small, [&] {
                                 try {
                                     remove_all(root.name("top"));
                                 } catch (SystemError const& failure) {
                                     EXPECT_EQ(failure.error_number(), EMFILE);
                                     EXPECT_TRUE(failure.pathname().starts_with(root.name("top/")));
                                 }
                             }};
        worker.join();
        EXPECT_EQ(open_descriptors(), descriptors);
        EXPECT_EQ(std::filesystem::exists(root.at("top")), limit == 100);
    }
}

TEST(tree_removal, takes_deep_trees_many_entries_and_names_that_are_no_text)
{
    run_as(::geteuid(), [] {
        rlimit const limit{6000, 20'000};
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) {
            GTEST_SKIP() << "6000 descriptors are not to be had";
        }
        make_and_remove("a-name-of-20-letters", 900, 1);
        make_and_remove("d", 5000, 1);
        make_and_remove("\xED\xA0\x80\xC3", 2, long_run ? 50'000 : 5'000);
    });
}

} // namespace nura::filesystem::test
