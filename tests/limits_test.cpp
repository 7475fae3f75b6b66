#include "support.hpp"

#include <boost/thread/thread.hpp>

#include <sys/resource.h>

namespace nura::filesystem::test {

/// Makes in a new tree a chain of `depth` directories called `name`, each beside `files` files,
/// and removes the tree on a thread with a stack of 256 KiB: in vain while there are few
/// descriptors, and then.
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
    for (rlim_t limit = depth > 100 ? 100 : 6000; limit <= 6000; limit += 5900) {
        rlimit const now{limit, 20'000};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &now), 0);
        boost::thread{small,
                      [&] {
                          try {
                              remove_all(root.name("top"));
                          } catch (SystemError const& failure) {
                              EXPECT_EQ(failure.error_number(), EMFILE);
                              EXPECT_TRUE(failure.pathname().starts_with(root.name("top/")));
                          }
                      }}
            .join();
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
        make_and_remove("d", 5000, 1);
        make_and_remove("\xED\xA0\x80\xC3", 2, long_run ? 50'000 : 5'000);
    });
}

TEST(descriptors, are_as_many_after_failing_operations_as_before)
{
    scene const s;
    scene const there{elsewhere};
    run_as(nobody, [&] {
        std::ptrdiff_t descriptors = 0;
        for (int round = 0; round <= (long_run ? 10'000 : 1'000); ++round) {
            for (auto const& [name, calls] : operations) {
                bool const walks = name == "remove_all" || name == "copy" || name == "rename";
                auto const from = s.name(walks ? "full" : name == "copy_file" ? "file" : "loop/x");
                EXPECT_THROW(calls(from, s.name("closed/x"))[0](), FsysExceptionBase) << name;
                EXPECT_THROW(calls(from, there.name("file"))[1](), FsysExceptionBase) << name;
            }
            // Converters and the like are open from now on.
            descriptors = round == 0 ? open_descriptors() : descriptors;
        }
        EXPECT_EQ(open_descriptors(), descriptors);
    });
}

} // namespace nura::filesystem::test
