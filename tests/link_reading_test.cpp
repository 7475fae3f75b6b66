#include "support.hpp"

#include <filesystem/operations.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace {
int reads = 0;
bool answers_no_length = false;
} // namespace

extern "C" ssize_t readlink(char const* name, char* text, std::size_t size) noexcept
{
    using system_call = ssize_t(char const*, char*, std::size_t);
    ++reads;
    auto* const system = nura::filesystem::test::hidden_definition<system_call>("readlink");
    return answers_no_length ? -2 : system(name, text, size);
}

namespace nura::filesystem::test {
namespace {

using namespace std::literals;
using name = std::u16string;

constexpr auto read = [](auto const& link, auto const&) { (void)read_symlink(link); };
constexpr auto compare = [](auto const& p1, auto const& p2) { (void)equivalent(p1, p2); };

template <class Exception, class Call>
void expect(Call call, name const& p1, name const& p2, failure const& expected = {})
{
    EXPECT_TRUE(fails<Exception>([&] { call(p1, p2); }, expected));
    EXPECT_TRUE(fails<Exception>([&] { call(path{p1, false}, path{p2, false}); }, expected));
}

/// A directory that is the current one and the home directory, so that the native form of a name
/// in its directory "~" lies outside that one.
class links : public testing::Test {
protected:
    links()
    {
        std::filesystem::create_directories(root.at("~/closed"));
        std::filesystem::current_path(root.at(""));
        std::ofstream{"file"};
        std::filesystem::create_hard_link("file", "hard");
        std::filesystem::create_symlink("file", "link");
        std::filesystem::create_symlink("loop", "loop");
        ::setenv("HOME", root.at("").c_str(), 1);
    }

    state_of_process const state;
    temporary_root const root;
};

TEST_F(links, are_read_whole_whatever_their_length)
{
    for (std::size_t const length : {1U, 1023U, 1024U, 1025U, 2048U, 4095U}) {
        std::filesystem::remove("link");
        if (::symlink(std::string(length, 't').c_str(), "link") != 0) {
            GTEST_SKIP() << "no link of " << length << " bytes here: " << std::strerror(errno);
        }
        reads = 0;
        EXPECT_EQ(read_symlink(u"link"), name(length, u't'));
        EXPECT_EQ(read_symlink(path{u"link"}).pathname(), name(length, u't'));
        EXPECT_EQ(reads, 2 * (length / 1024 + 1)) << length;
    }
    answers_no_length = true;
    expect<SystemError>(read, u"link", u"");
    answers_no_length = false;
}

TEST_F(links, are_read_as_they_are_stored_or_as_paths)
{
    for (auto const& [stored, as_path] : table<2>("a/b a/b  /a//../b/ /a/../b  ~ ~  \xFF \uFFFD")) {
        std::filesystem::remove("link");
        EXPECT_EQ(::symlink(stored.c_str(), "link"), 0);
        EXPECT_EQ(read_symlink(u"~//link/"), detail::from_filesystem(stored));
        path const text = read_symlink(path{u"~/link"});
        EXPECT_TRUE(text == path{detail::from_filesystem(as_path)} && text.expand_tilde()) << text;
    }
    EXPECT_TRUE(read_symlink(u"").empty() && read_symlink(path{}).empty());
    EXPECT_THROW(read(path{u"~/link", false}, 0), PathNotFound);
}

TEST_F(links, are_named_if_they_cannot_be_read)
{
    expect<InvalidArgument>(read, u"file", u"", {u"file", {u""}});
    expect<InvalidArgument>(read, u"link\0"s, u"", {u"link\0"s, {u""}});
    expect<PathNotFound>(read, u"\xDC00", u"", {u"\uFFFD"});
    expect<PathNotFound>(read, u"\xD800", u"");
    expect<NotDirectoryError>(read, u"file/x", u"", {u"file/x"});
    expect<SystemError>(read, u"loop/x", u"", {u"loop/x", {u""}, ELOOP});
}

TEST_F(links, and_other_names_are_equivalent_if_they_lead_to_one_file)
{
    for (auto const& [p1, p2, by_string, by_path] : table<4>(
             "file file 1 1  file hard 1 1  hard ./~/..//link 1 1  file ~ 0 0  file file/ 0 1  "
             "file ~/file 0 1  . ~/.. 1 0  file missing 0 0  file loop 0 0  file '' 0 0")) {
        SCOPED_TRACE(p1 + ' ' + p2);
        EXPECT_EQ(equivalent(u16(p1), u16(p2)), by_string == "1");
        EXPECT_EQ(equivalent(u16(p2), u16(p1)), by_string == "1");
        EXPECT_EQ(equivalent(path{u16(p1)}, path{u16(p2)}), by_path == "1");
    }
    EXPECT_FALSE(equivalent(u"\xD800", u"") || equivalent(u"\xD800", u"file"));
    EXPECT_FALSE(equivalent(path{u"missing"}, path{u"\xD800"}));
}

TEST_F(links, and_other_names_are_reported_by_their_low_bytes_if_neither_can_be_compared)
{
    expect<InvalidArgument>(compare, u"", u"", {{}, {}, 0, "Empty Path not permitted"});
    expect<PathNotFound>(compare, u"\xD800", u"a\xD800");
    expect<PathNotFound>(compare, u"\u4E2D", u"loop", {u"-"});
    expect<PathNotFound>(compare, u"\u00E9\u01C3\u01A9", u"\xDC00", {u"\uFFFD\u00E9"});
    expect<NotDirectoryError>(compare, u"file/\u4E2D", u"missing", {u"file/-"});
    expect<SystemError>(compare, u"loop", u"\u4E2D", {u"loop", {u"-"}, ELOOP});
    expect<InvalidArgument>(compare, u"\u4E2D\0"s, u"\u00E9", {u"-\0"s, {u"\uFFFD"}});
    expect<InvalidArgument>(compare, u"file", u"file\0"s, {u"file", {u"file\0"s}});
    expect<FileNameTooLarge>(compare, name(256, u'n'), u"\u4E2D", {u"-"});
    expect<FileNameTooLarge>(compare, name(1024, u'n'), u"\u4E2D", {name(1024, u'n')});
    // Where the first one is there and can be read in native form, the other is to blame.
    expect<PathNotFound>(compare, u"~/file", u"\u4E2D", {u"-"});
    std::filesystem::create_directory("closed");
    std::ofstream{"closed/x"};
    EXPECT_EQ(::chmod("~/closed", 0), 0);
    run_as(nobody, [] {
        expect<AccessDenied>(compare, u"~/closed/x", u"\u4E2D", {u"-"});
        expect<AccessDenied>(compare, u"~/closed/\u4E2D", u"missing", {u"~/closed/-"});
        expect<AccessDenied>(read, u"./~/closed/x", u"", {u"./~/closed/x"});
    });
}

} // namespace
} // namespace nura::filesystem::test
