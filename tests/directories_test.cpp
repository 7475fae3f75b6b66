#include "operation_cases.hpp"

namespace nura::filesystem::test {

TEST(directory_creation, makes_a_directory_or_names_it)
{
    scene{}.expect("create_directory create_directories", R"(
        new - ok ok              new/a/b - ENOENT ok        empty - EEXIST EEXIST    to-full - EEXIST EEXIST
        file - EEXIST ENOTDIR    to-file - EEXIST ENOTDIR   fifo - EEXIST ENOTDIR    dangling - EEXIST EEXIST
        file/x - ENOTDIR ENOTDIR file/x/y - ENOTDIR ENOTDIR loop - EEXIST ELOOP      loop/x - ELOOP ELOOP
        LONG - ENAMETOOLONG ENAMETOOLONG)");
}

} // namespace nura::filesystem::test
