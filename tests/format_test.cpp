#include <filesystem/format.hpp>

#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <vector>

namespace nura::filesystem::test {

TEST(format, shows_a_path_as_display_does_or_in_quotes)
{
    path const odd{u"a\"\\/\u65E5\n"};
    EXPECT_EQ(fmt::format("{}", odd), odd.display());
    EXPECT_EQ(fmt::format("[{:_^9}]", path{u"a//b"}), "[___a/b___]");
    EXPECT_EQ(fmt::format("{:?}", odd), R"("a\"\\/)"
                                        "\u65E5"
                                        R"(\u000A")");
    EXPECT_EQ(fmt::format("{}", std::vector{path{u"\n"}, path{u"\\u000A"}}),
              R"(["\u000A", "\\u000A"])");
    EXPECT_THROW(static_cast<void>(fmt::format(fmt::runtime("{:?<5}"), odd)), fmt::format_error);
}

} // namespace nura::filesystem::test
