#include <filesystem/describe.hpp>
#include <filesystem/exceptions.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace nura::filesystem::test {

TEST(describe, says_the_pathnames_the_reason_and_the_type_in_one_line)
{
    std::string const missing = ": no such file or directory [PathNotFound]";
    EXPECT_EQ(describe(PathNotFound{u"/\u00E9"}, u"/x"), "'/\u00E9'" + missing);
    EXPECT_EQ(describe(PathNotFound{u""}, u"/x\n\xD800"), "'/x\\u000A\\uD800'" + missing);
    std::string const read_only = ": read-only file system [SystemError 30]";
    EXPECT_EQ(describe(SystemError{u"/a", {u"/ro/b"}, 30}), "'/a' -> '/ro/b'" + read_only);
    EXPECT_EQ(describe(SystemError{u"/a", {u""}, 30}), "'/a'" + read_only);
    EXPECT_EQ(describe(InvalidArgument{"Empty Path not permitted", u"", {}}),
              "invalid argument: Empty Path not permitted [InvalidArgument]");
    EXPECT_TRUE(describe(std::runtime_error{"broken"}, u"/x").starts_with("'/x'"));
}

} // namespace nura::filesystem::test
