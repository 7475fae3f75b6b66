#include "support.hpp"

#include <algorithm>
#include <random>

namespace nura::filesystem::test {

using namespace detail;
using string = std::u16string;

failure const absolute_refused{{}, {}, 0, "Absolute path not permitted"};
failure const bad_extension{{}, {}, 0, "Invalid extension"};

template <class Char>
static void expect_common_rules()
{
    using traits = path_traits<Char, Char>;
    auto const in = [](std::string const& s) {
        return std::basic_string<Char>(s.begin(), s.end());
    };
    ::setenv("HOME", "/u//", 1);
    EXPECT_EQ(traits::make_native_form(in("~//x//"), true), in("/u/x"));
    // The text "refused" stands for the refusal of an absolute tail.
    for (auto const& [base, tail, result] : table<3>(R"(
             '' '' ''  '' //x/ /x   / x /x     a/ b/ a/b  a// b a//b  a '' a/  / '' /
             a b/~ a/b/~  '' ~/x /u/x)")) {
        auto p = in(base);
        traits::concatenate_pathname(p, in(tail), true);
        EXPECT_EQ(p, in(result));
    }
    for (auto const* tail : {"/x", "//", "~/x"}) {
        auto p = in("a");
        EXPECT_TRUE(fails<InvalidArgument>([&] { traits::concatenate_pathname(p, in(tail), true); },
                                           absolute_refused));
    }
    for (auto const& [given, parent, filename] : table<3>(
             "'' '' ''  / '' /  /a / a  a '' a  a/ a ''  /a/b /a b  /a//b/ /a//b ''  ~/x ~ x")) {
        auto p = in(given);
        EXPECT_EQ(traits::extract_filename(p), in(filename)) << given;
        EXPECT_EQ(traits::is_absolute(p), given.starts_with('/'));
        EXPECT_EQ(traits::remove_filename(p), in(parent));
    }
}

TEST(pathname_grammar, has_one_set_of_rules_for_both_character_types)
{
    expect_common_rules<char>();
    expect_common_rules<char16_t>();
}

TEST(pathname_grammar, separates_the_extension)
{
    for (auto const& [filename, stem, extension, stem_of_all] : table<4>(R"(
             a a '' a  a.b.c a.b c a.b  .profile '' profile ''  . . '' .  .. .. '' ..
             a. a '' a.  ... .. '' ...  ..a . a .)")) {
        for (std::string const directory : {"", "/", "d.e/"}) {
            path const p{u16(directory + filename)};
            EXPECT_EQ(extract_stem(p.pathname()), u16(stem)) << filename;
            EXPECT_EQ(extract_extension(p.pathname()), u16(extension)) << filename;
            EXPECT_EQ(p.elements().stem, u16(stem_of_all)) << filename;
            EXPECT_TRUE(p.stem() == u16(stem) && p.extension() == u16(extension));
        }
    }
    for (auto const& [given, extension, changed] : table<3>(R"(
             a.txt md a.md  a.txt .md a.md  a md a.md  .profile bak .bak  a. md a..md
             a.b '' a.b  '' md ''  d/ md d/  .. md ..  d.e/. .. d.e/.  d/ x/y d/  d.e/a b.c d.e/a.b.c)")) {
        string p = u16(given);
        replace_extension(p, u16(extension));
        EXPECT_EQ(p, u16(changed));
    }
    string p = u"a";
    for (auto const* extension : {u".", u"..", u"..md", u"x/y", u".x/"}) {
        EXPECT_TRUE(
            fails<InvalidArgument>([&] { replace_extension(p, extension); }, bad_extension));
    }
}

static void expect_consistent(string const& text)
{
    SCOPED_TRACE(testing::PrintToString(text));
    string const root{text, 0, text.starts_with(u'/')};
    std::vector<string> elements(root.size(), root);
    string p = root;
    std::basic_istringstream<char16_t> parts{text};
    for (string part; std::getline(parts, part, u'/');) {
        if (!part.empty()) {
            p += (p == root ? u"" : u"/") + part;
            elements.push_back(part);
        }
    }
    EXPECT_EQ(make_native_form(text, false), p);
    EXPECT_EQ((path_traits<char, char>::make_native_form(to_filesystem(text), false)),
              to_filesystem(p));
    EXPECT_EQ(make_generic_form(text), text);
    EXPECT_TRUE(get_root_path_length(text) == root.size() && is_absolute(text) != root.empty());
    EXPECT_TRUE(extract_root_path(text) == root && extract_root_directory(text) == root);
    EXPECT_EQ(extract_root_name(text), u"");
    EXPECT_EQ(root + extract_relative_path(text), text);

    auto const all = extract_pathname_elements(text);
    EXPECT_EQ(all.filename, extract_filename(text));
    EXPECT_EQ(all.extension, extract_extension(text));
    EXPECT_EQ(all.parent_path, extract_parent_path(text));
    string rest = text;
    EXPECT_EQ(remove_filename(rest), all.parent_path);

    std::vector<string> down, up;
    std::size_t pos = 0;
    auto element = extract_first_element(p, root.size());
    for (; pos < p.size(); move_down(p, root.size(), pos, element)) {
        down.push_back(element);
    }
    EXPECT_TRUE(element.empty() && pos == p.size());
    std::size_t behind = pos + 7;
    move_down(p, root.size(), behind, element);
    EXPECT_TRUE(element.empty() && behind == pos + 7);
    while (pos != 0 && up.size() <= down.size()) {
        move_up(p, root.size(), pos, element);
        up.insert(up.begin(), element);
    }
    move_up(p, root.size(), pos, element = u"kept");
    EXPECT_TRUE(element == u"kept" && pos == 0);
    path const walked{p};
    EXPECT_EQ(down, elements);
    EXPECT_EQ(up, elements);
    EXPECT_EQ(std::vector<string>(walked.begin(), walked.end()), elements);
    EXPECT_TRUE(std::equal(walked.rbegin(), walked.rend(), elements.rbegin(), elements.rend()));
    EXPECT_EQ(walked.filename(), elements.empty() ? u"" : elements.back());
    if (elements.size() > 1) {
        EXPECT_EQ((path{walked.parent_path()} / walked.filename()).pathname(), p);
    }
}

TEST(pathname_grammar, agrees_with_itself_for_texts_of_any_length)
{
    // The last two units share their low bytes with '/' and '.'.
    string const units = u"/.a\u012F\u012E";
    visit_texts(units, 6, expect_consistent);
    std::mt19937 random{80};
    for (int left = 20'000; left > 0 && !HasFailure(); --left) {
        string text(random() % 80, u'b');
        for (auto count = random() % 40; count != 0 && !text.empty(); --count) {
            text[random() % text.size()] = units[random() % units.size()];
        }
        expect_consistent(text);
    }
}

} // namespace nura::filesystem::test
