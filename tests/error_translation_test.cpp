#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "support.hpp"

#include <cerrno>
#include <cstdlib>
#include <map>

namespace {
thread_local bool next_allocation_fails = false;
} // namespace

[[gnu::noinline]] void* operator new(std::size_t size)
{
    void* const memory = std::exchange(next_allocation_fails, false) ? nullptr : std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc{};
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace nura::filesystem::test {

TEST(error_translation, gives_nine_numbers_their_types_and_every_other_one_the_system_error)
{
    std::map<int, failure_check> const types{
        {ENOENT, fails<PathNotFound>},        {EACCES, fails<AccessDenied>},
        {EEXIST, fails<FileExistsError>},     {ENOTDIR, fails<NotDirectoryError>},
        {EISDIR, fails<FileIsDirectory>},     {EINVAL, fails<InvalidArgument>},
        {ENOTSUP, fails<InvalidArgument>},    {ENAMETOOLONG, fails<FileNameTooLarge>},
        {ENOTEMPTY, fails<DirectoryNotEmpty>}};
    for (int number = -1; number < 140; ++number) {
        bool const other = !types.contains(number);
        for (std::string const second : {"", "b\xC3\xA9"}) {
            failure expected{u"a\uFFFD", {}, other ? number : 0};
            if (other || number == EINVAL || number == ENOTSUP) {
                expected.other_pathnames = {second.empty() ? u"" : u"b\u00E9"};
            }
            EXPECT_TRUE((other ? fails<SystemError> : types.at(number))(
                [&] { detail::throw_errno_exception(number, "a\xE9", second); }, expected));
        }
    }
    EXPECT_TRUE(fails<PathNotFound>([] { detail::throw_errno_exception(ENOENT, "", ""); }));
    EXPECT_TRUE(fails<InvalidOperation>(detail::throw_invalid_operation_exception));
}

TEST(error_translation, widens_the_bytes_of_a_name_where_the_conversion_throws)
{
    std::string const name = "a name of some length \xC3\xA9";
    EXPECT_EQ(detail::native_name_for_exception(name), u"a name of some length \u00E9");
    next_allocation_fails = true;
    EXPECT_EQ(detail::native_name_for_exception(name), u"a name of some length \xFFC3\xFFA9");
}

} // namespace nura::filesystem::test
