#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "support.hpp"

#include <iconv.h>

#include <thread>

static thread_local bool out_of_memory = false;

extern "C" iconv_t iconv_open(char const* to, char const* from)
{
    auto* const system =
        nura::filesystem::test::hidden_definition<iconv_t(char const*, char const*)>("iconv_open");
    return out_of_memory ? throw std::bad_alloc{} : system(to, from);
}

namespace nura::filesystem::test {

TEST(error_translation, gives_nine_numbers_their_types_and_every_other_one_the_system_error)
{
    for (int number = -1; number < 140; ++number) {
        for (auto const& [second, carried] :
             {std::pair{"", u""}, std::pair{"b\xC3\xA9", u"b\u00E9"}}) {
            EXPECT_TRUE(fails_with(number, {u"a\uFFFD", carried}, [&, &bytes = second] {
                detail::throw_errno_exception(number, "a\xE9", bytes);
            }));
        }
    }
    EXPECT_TRUE(fails<InvalidOperation>(detail::throw_invalid_operation_exception));
}

TEST(error_translation, widens_the_bytes_of_a_name_where_the_conversion_throws)
{
    std::thread{[] {
        out_of_memory = true; // for the converter of this thread
        EXPECT_EQ(detail::native_name_for_exception("a\xC3\xA9"), u"a\xFFC3\xFFA9");
    }}.join();
}

} // namespace nura::filesystem::test
