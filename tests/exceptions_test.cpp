#include "support.hpp"

#include <filesystem/operations.hpp>

#include <boost/exception_ptr.hpp>

#include <thread>

namespace nura::filesystem::test {

static_assert(std::is_abstract_v<FsysExceptionBase>);

static void expect_identity(FsysExceptionBase const& e, unsigned kind, std::string const& type)
{
    EXPECT_EQ(e.message_id(), "nura:filesystem:" + type);
    EXPECT_TRUE(e.what() == e.message_id() || kind == 1) << e.what();
    EXPECT_EQ(e.kind(), kind);
    EXPECT_EQ(e.pathname(), kind == 2 ? u"" : u"/a");
    EXPECT_EQ(e.other_pathnames(), std::vector<std::u16string>(kind == 1 || kind == 13, u"b"));
    EXPECT_EQ(e.error_number(), kind == 13 ? 28 : 0);
}

TEST(exceptions, have_the_identifier_and_the_code_of_their_type)
{
    expect_identity(InvalidArgument{"t", u"/a", {u"b"}}, 1, "InvalidArgument");
    expect_identity(InvalidOperation{}, 2, "InvalidOperation");
    expect_identity(FileNameTooLarge{u"/a"}, 3, "FileNameTooLarge");
    expect_identity(AccessDenied{u"/a"}, 6, "AccessDenied");
    expect_identity(PathNotFound{u"/a"}, 7, "PathNotFound");
    expect_identity(NotDirectoryError{u"/a"}, 8, "NotDirectoryError");
    expect_identity(DirectoryNotEmpty{u"/a"}, 9, "DirectoryNotEmpty");
    expect_identity(FileIsDirectory{u"/a"}, 10, "FileIsDirectory");
    expect_identity(FileExistsError{u"/a"}, 11, "FileExistsError");
    expect_identity(SystemError{u"/a", {u"b"}, 28}, 13, "SystemError");
}

TEST(exceptions, of_an_invalid_argument_say_the_text_and_the_escaped_pathname)
{
    auto const text_of = [](std::string const& text, std::u16string const& pathname) {
        InvalidArgument const e{text, pathname, {u"never said"}};
        std::string const first = e.what();
        EXPECT_EQ(first, e.what());
        return first.substr(e.message_id().size());
    };
    EXPECT_EQ(text_of("", u""), "");
    EXPECT_EQ(text_of("Invalid extension", u""), ": Invalid extension");
    EXPECT_EQ(text_of("", u"/tmp/caf\u00E9"), ": {/tmp/caf\\u00E9}");
    EXPECT_EQ(text_of("No", {u"\0\t\x1F ~\x7F\x80\xFFFF\U0001F600", 10}),
              ": No: {\\u0000\\u0009\\u001F ~\x7F\\u0080\\uFFFF\\uD83D\\uDE00}");
}

TEST(exceptions, reach_another_thread_with_their_type_and_content)
{
    std::u16string const name(300, u'x');
    boost::exception_ptr thrown;
    try {
        (void)exists(name);
    } catch (FsysExceptionBase const&) {
        thrown = boost::current_exception();
    }
    std::thread{[&] {
        EXPECT_TRUE(fails<FileNameTooLarge>([&] { boost::rethrow_exception(thrown); }, {name}));
    }}.join();
}

} // namespace nura::filesystem::test
