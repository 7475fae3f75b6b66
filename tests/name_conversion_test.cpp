#include "native/name_conversion.hpp"
#include "support.hpp"

#include <filesystem/pathname_grammar.hpp>

#include <set>
#include <thread>

namespace nura::filesystem::test {

using detail::from_filesystem;
using detail::to_filesystem;
using posix::detail::get_thread_local_iconv_converter;

auto const unusable = reinterpret_cast<iconv_t>(-1);

// ASCII, both ends of each encoded length and of the surrogates, a byte-order mark.
std::u16string const telling_units{0,      u'/',   0x7F,   0x80,   0x7FF,  0x800,  0xD7FF,
                                   0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFEFF, 0xFFFF};

// ASCII, both ends of each range that leads or continues a sequence, and what can do neither.
std::string const telling_bytes{"\x00\x2F\x7F\x80\x8F\x90\x9F\xA0\xBB\xBF\xC0\xC1\xC2\xDF\xE0"
                                "\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xF8\xFC\xFF",
                                28};

/// The definition, over the code conversion of the standard library.
static std::string encoded(std::u16string text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool const high = text[i] >> 10 == 0xD800 >> 10;
        if (high && i + 1 == text.size()) {
            return {};
        }
        if (high && text[i + 1] >> 10 == 0xDC00 >> 10) {
            ++i;
        } else if (text[i] >> 11 == 0xD800 >> 11) {
            text[i] = u'\uFFFD';
        }
    }
    return std::filesystem::path{text}.string();
}

/// The definition: what is not the encoding of a character is replaced byte by byte.
static std::u16string decoded(std::string const& bytes)
{
    std::u16string text;
    for (std::size_t i = 0; i < bytes.size();) {
        auto const lead = static_cast<unsigned char>(bytes[i]);
        std::size_t const size = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        std::string const sequence = bytes.substr(i, size);
        char32_t c = size == 1 ? lead : lead & 0x7FU >> size;
        for (char const byte : sequence.substr(1)) {
            c = c << 6 | (static_cast<unsigned char>(byte) & 0x3F);
        }
        std::u16string character{static_cast<char16_t>(c)};
        if (c >= 0x10000) {
            character = {static_cast<char16_t>(0xD7C0 + c / 0x400),
                         static_cast<char16_t>(0xDC00 + c % 0x400)};
        }
        bool const valid = encoded(character) == sequence;
        text += valid ? character : u"\uFFFD";
        i += valid ? size : 1;
    }
    return text;
}

TEST(name_conversion, follows_the_encodings_for_short_combinations_behind_texts_of_any_length)
{
    auto const longer = [](std::u16string const& before) {
        return before.size() > 1100 ? u""
                                    : before + std::array{u"a", u"\u00E9", u"\u20AC",
                                                          u"\U0001F600"}[before.size() / 300];
    };
    std::thread other{[&] {
        std::u16string before;
        visit_texts(telling_bytes, 4, [&](std::string const& bytes) {
            errno = EILSEQ;
            EXPECT_EQ(from_filesystem(bytes), decoded(bytes)) << testing::PrintToString(bytes);
            EXPECT_EQ(detail::make_access_form(bytes), bytes);
            if (bytes.size() == 3) {
                before = longer(before);
                EXPECT_EQ(from_filesystem(encoded(before) + bytes), before + decoded(bytes));
            }
        });
    }};
    std::u16string before;
    visit_texts(telling_units, 5, [&](std::u16string const& text) {
        errno = E2BIG;
        EXPECT_EQ(to_filesystem(text), encoded(text)) << testing::PrintToString(text);
        EXPECT_EQ(detail::make_native_access_form(text), encoded(text));
        if (text.size() == 4) {
            before = longer(before);
            EXPECT_EQ(to_filesystem(before + text), encoded(before + text));
        }
    });
    other.join();
}

static std::string converted_late;

TEST(name_conversion, has_one_converter_for_each_direction_and_thread_even_while_the_thread_ends)
{
    auto const mine = get_thread_local_iconv_converter<1>("UTF-8", "UTF-16LE");
    pthread_key_t younger_than_the_library_s{};
    auto const convert = [](void*) { converted_late = to_filesystem(u"\u00E9"); };
    ASSERT_EQ(::pthread_key_create(&younger_than_the_library_s, convert), 0);
    std::thread{[&] {
        // Even names that need no converter open theirs.
        EXPECT_TRUE(to_filesystem(u"").empty() && from_filesystem("").empty());
        auto const to_native = get_thread_local_iconv_converter<1>("no such", "encoding");
        auto const from_native = get_thread_local_iconv_converter<0>("no such", "encoding");
        std::set<iconv_t> const all{unusable, mine, to_native, from_native};
        EXPECT_EQ(all.size(), 4U);
        ::pthread_setspecific(younger_than_the_library_s, &converted_late);
    }}.join();
    ::pthread_key_delete(younger_than_the_library_s);
    EXPECT_EQ(converted_late, "\xC3\xA9");
}

TEST(name_conversion, lives_with_no_converter)
{
    std::string const most(259, 'a');
    std::thread{[&] {
        EXPECT_EQ(get_thread_local_iconv_converter<1>("no such", "UTF-16LE"), unusable);
        EXPECT_EQ(from_filesystem(most + "a"), u16(most + "a")) << "the other direction";
        EXPECT_EQ(to_filesystem(u16(most)), most);
        EXPECT_TRUE(to_filesystem(u16(most + "a")).empty() && to_filesystem(u"\u0080").empty());
    }}.join();
}

} // namespace nura::filesystem::test
