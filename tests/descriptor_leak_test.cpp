#include "operation_cases.hpp"

namespace nura::filesystem::test {

TEST(descriptors, are_as_many_after_failing_operations_as_before)
{
    scene const s;
    scene const there{"/dev/shm"};
    run_as(nobody, [&] {
        std::ptrdiff_t descriptors = 0;
        for (int round = 0; round <= (long_run ? 10'000 : 1'000); ++round) {
            for (auto const& [name, calls] : operations) {
                bool const walks = name == "remove_all" || name == "copy" || name == "rename";
                auto const from = s.name(walks                 ? "full"
                                         : name == "copy_file" ? "file"
                                                               : "missing/x");
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
