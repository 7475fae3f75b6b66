#include "support.hpp"

#include <boost/functional/hash.hpp>

#include <random>

namespace nura::filesystem::test {

using namespace literals;
using string = std::u16string;

static_assert(!std::is_convertible_v<string, path> && !std::is_convertible_v<char16_t*, path> &&
              !std::is_constructible_v<path, std::string>);

TEST(path, holds_the_native_form_made_with_its_tilde_switch)
{
    ::setenv("HOME", "/u", 1);
    string const given = u"~//x/";
    EXPECT_TRUE(path{}.empty() && path{}.expand_tilde());
    for (path const& p :
         {path{given}, u"~//x/"_path, path::from_utf8("~//x/"), path{u"~"} / u"x"}) {
        EXPECT_TRUE(p.pathname() == u"/u/x" && p.expand_tilde());
    }
    for (path const& p : {path{given, false}, path{std::filesystem::path{given}},
                          path::from_utf8("~//x/", false), path{u"", false} / u"~/x"}) {
        EXPECT_TRUE(p.pathname() == u"~/x" && !p.expand_tilde());
    }
    path p{u"a"};
    failure const absolute{{}, {}, 0, "Absolute path not permitted"};
    EXPECT_TRUE(fails<InvalidArgument>([&] { p /= u"~"; }, absolute));
    EXPECT_EQ((p / u"").pathname(), u"a");
    p /= path{u"~", false};
    p /= p.pathname();
    EXPECT_EQ(p, (path{u"a/~/a/~", false}));
    EXPECT_LT(path{u"\U0001F600"}, path{u"\uFFFD"});
}

TEST(path, converts_exactly_or_not_at_all)
{
    for (string const& text : {string{u"a\0\u00E9\uFEFF\U0001F600", 6}, string(2000, u'\u4E2D')}) {
        path const p{text};
        EXPECT_EQ(p.to_utf8(), std::filesystem::path{text}.string());
        EXPECT_EQ(static_cast<std::filesystem::path>(p), std::filesystem::path{text});
        EXPECT_EQ(path::from_utf8(p.to_utf8()), p);
    }
    for (string const text : {u"a\xD800", u"\xDC00z", u"\xD800\xD800\xDC00"}) {
        path const p{text};
        EXPECT_TRUE(fails<InvalidArgument>([&] { (void)p.to_utf8(); },
                                           {text, {}, 0, "Text is not valid UTF-16"}));
        EXPECT_THROW((void)static_cast<std::filesystem::path>(p), std::runtime_error);
    }
    EXPECT_TRUE(fails<InvalidArgument>([] { (void)path::from_utf8("a\xE2\x82"); },
                                       {u"a\uFFFD\uFFFD", {}, 0, "Text is not valid UTF-8"}));
}

TEST(path, is_displayed_with_what_people_cannot_read_escaped)
{
    EXPECT_EQ((std::ostringstream{} << path{u"a\n\x7F\u0085\u00A0\xD800/\U0001F600\xDC00"}).str(),
              "a\\u000A\\u007F\\u0085\u00A0\\uD800/\U0001F600\\uDC00");
}

// What benchmarks/llvm_hash.cpp, the hash of LLVM's standard library, answers for texts of so many
// units.
constexpr std::pair<std::size_t, std::uint64_t> recorded_hashes[]{
    {0, 0x9ae16a3b2f90404f},   {1, 0xff16be6b3fbc2c47},  {2, 0xc4ad3be1a1472f6c},
    {4, 0xea006042f51d7dd},    {8, 0x1d0cbf851c5265},    {9, 0x6809ed84de386d01},
    {16, 0xbef27925f93af912},  {17, 0x49fb98a6ac09bb0d}, {32, 0x4d8e846704be5dc8},
    {33, 0x9abaed20e59cf5ab},  {64, 0xdd01b9ca33edb85},  {65, 0xe46cb271beb5fc88},
    {128, 0x387b2bb0fcacfb9b}, {300, 0xb139fc60e21ed3d}};

TEST(path_hash, is_the_recorded_one_whatever_the_length_and_the_tilde_switch)
{
    static_assert(noexcept(std::hash<path>{}(path{})));
    std::mt19937 units{2024};
    std::u16string text;
    for (auto const& [length, expected] : recorded_hashes) {
        while (text.size() < length) {
            text += static_cast<char16_t>(units());
        }
        EXPECT_EQ(std::hash<path>{}(path{text, true}), expected) << length << " units";
        EXPECT_EQ(boost::hash<path>{}(path{text, false}), expected);
    }
}

} // namespace nura::filesystem::test
