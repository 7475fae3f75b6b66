#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "support.hpp"

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

} // namespace nura::filesystem::test
