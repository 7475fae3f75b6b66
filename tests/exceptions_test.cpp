#include "support.hpp"

#include <filesystem/describe.hpp>

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
    EXPECT_NE(describe(e).find('[' + type), std::string::npos) << describe(e);
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
    std::u16string const odd{u"\0\t\x1F ~\x7F\x80\xFFFF\U0001F600", 10};
    InvalidArgument const e{"No", odd, {u"never said"}};
    EXPECT_EQ(e.what(),
              e.message_id() + ": No: {\\u0000\\u0009\\u001F ~\x7F\\u0080\\uFFFF\\uD83D\\uDE00}");
    EXPECT_EQ((InvalidArgument{"No", u"", {}}.what()), e.message_id() + ": No");
    EXPECT_EQ((InvalidArgument{"", u"", {}}.what()), e.message_id());
}

TEST(exceptions, are_described_with_pathnames_reason_and_type_in_one_line)
{
    EXPECT_EQ(describe(PathNotFound{u""}, u"/\u00E9\n\xD800"),
              "'/\u00E9\\u000A\\uD800': no such file or directory [PathNotFound]");
    EXPECT_EQ(describe(SystemError{u"/a", {u"/ro/b"}, 30}, u"/x"),
              "'/a' -> '/ro/b': read-only file system [SystemError 30]");
    EXPECT_EQ(describe(SystemError{u"a", {u""}, 28}),
              "'a': no space left on device [SystemError 28]");
    EXPECT_EQ(describe(InvalidArgument{"Empty Path not permitted", u"", {}}),
              "invalid argument: Empty Path not permitted [InvalidArgument]");
    EXPECT_EQ(describe(std::runtime_error{"bro\x7Fken"}, u"/x"), "'/x': bro\\u007Fken");
}

} // namespace nura::filesystem::test
