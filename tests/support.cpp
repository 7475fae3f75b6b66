#include "support.hpp"

#include <boost/exception/exception.hpp>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <map>

namespace nura::filesystem::test {

testing::AssertionResult reports(FsysExceptionBase const& thrown, failure const& expected)
{
    auto const* const argument = dynamic_cast<InvalidArgument const*>(&thrown);
    bool const cloneable =
        dynamic_cast<boost::exception_detail::clone_base const*>(&thrown) != nullptr;
    std::tuple const is{thrown.pathname(), thrown.other_pathnames(), thrown.error_number(),
                        argument == nullptr ? "" : argument->text(), cloneable};
    std::tuple const should_be{expected.pathname, expected.other_pathnames, expected.error_number,
                               expected.text, true};
    return testing::AssertionResult{is == should_be}
           << thrown.what()
           << " (pathname, others, number, text, cloneable): " << testing::PrintToString(is)
           << ", expected " << testing::PrintToString(should_be);
}

int number_of(std::string const& error)
{
    int number = error == "ok" ? 0 : 200;
    while (number > 0 &&
           (::strerrorname_np(number) == nullptr || ::strerrorname_np(number) != error)) {
        --number;
    }
    return number;
}

testing::AssertionResult fails_with(int error, named const& names,
                                    std::function<void()> const& call)
{
    using check = testing::AssertionResult (*)(std::function<void()> const&, failure const&);
    static std::map<int, check> const checks{
        {ENOENT, fails<PathNotFound>},        {EACCES, fails<AccessDenied>},
        {EEXIST, fails<FileExistsError>},     {ENOTDIR, fails<NotDirectoryError>},
        {EISDIR, fails<FileIsDirectory>},     {EINVAL, fails<InvalidArgument>},
        {ENOTSUP, fails<InvalidArgument>},    {ENAMETOOLONG, fails<FileNameTooLarge>},
        {ENOTEMPTY, fails<DirectoryNotEmpty>}};
    auto const found = checks.find(error);
    bool const other = found == checks.end();
    failure expected{names.first, {}, other ? error : 0};
    if (other || error == EINVAL || error == ENOTSUP) {
        expected.other_pathnames = {names.second};
    }
    return (other ? fails<SystemError> : found->second)(call, expected);
}

testing::AssertionResult fails_with(std::string const& error, named const& names,
                                    std::function<void()> const& call)
{
    return error == "ok" ? (call(), testing::AssertionSuccess())
                         : fails_with(number_of(error), names, call);
}

testing::AssertionResult fails_with(std::string const& error, named const& names,
                                    overloads const& calls)
{
    auto const result = fails_with(error, names, calls[0]);
    return result ? fails_with(error, names, calls[1]) : result;
}

temporary_root::temporary_root(std::filesystem::path const& below)
{
    auto name = (std::filesystem::canonical(below) / "nura-test-XXXXXX").string();
    EXPECT_TRUE(::mkdtemp(name.data()) != nullptr && ::chmod(name.c_str(), 0755) == 0) << name;
    directory_ = name;
}

temporary_root::~temporary_root()
{
    std::error_code ignored;
    std::filesystem::recursive_directory_iterator entry{directory_, ignored};
    for (; entry != std::filesystem::recursive_directory_iterator{}; entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
            // In time: the iterator enters the directory with its next step.
            std::filesystem::permissions(*entry, std::filesystem::perms::owner_all, ignored);
        }
    }
    std::filesystem::remove_all(directory_, ignored);
    EXPECT_FALSE(std::filesystem::exists(directory_, ignored)) << directory_ << " is left behind";
}

state_of_process::state_of_process()
    : directory_{::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)}, mask_{::umask(0)}
{
    ::umask(mask_);
    if (char const* const home = std::getenv("HOME")) {
        home_ = home;
    }
}

state_of_process::~state_of_process()
{
    EXPECT_EQ(home_ ? ::setenv("HOME", home_->c_str(), 1) : ::unsetenv("HOME"), 0);
    EXPECT_EQ(::fchdir(directory_), 0);
    ::close(directory_);
    ::umask(mask_);
}

void run_as(uid_t id, std::function<void()> const& body)
{
    constexpr int skipped = 2;
    std::fflush(nullptr);
    pid_t const child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        bool const same = id == ::geteuid();
        if (!same && (::setgroups(0, nullptr) != 0 || ::setresgid(id, id, id) != 0 ||
                      ::setresuid(id, id, id) != 0)) {
            ::_exit(skipped);
        }
        EXPECT_NO_THROW(body());
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : testing::Test::IsSkipped() ? skipped : 0);
    }
    int result = 0;
    ASSERT_EQ(TEMP_FAILURE_RETRY(::waitpid(child, &result, 0)), child);
    if (WIFEXITED(result) && WEXITSTATUS(result) == skipped) {
        GTEST_SKIP() << "the child skipped, or may not become user " << id;
    }
    EXPECT_EQ(result, 0) << "wait status of the child";
}

} // namespace nura::filesystem::test
