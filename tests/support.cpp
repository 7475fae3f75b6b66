#include "support.hpp"

#include <boost/exception/exception.hpp>

#include <dirent.h>
#include <dlfcn.h>
#include <grp.h>
#include <sys/sendfile.h>
#include <sys/wait.h>

#include <cstring>

namespace nura::filesystem::test {

testing::AssertionResult reports(FsysExceptionBase const& thrown, failure const& expected)
{
    auto const* const argument = dynamic_cast<InvalidArgument const*>(&thrown);
    auto const* clone = dynamic_cast<boost::exception_detail::clone_base const*>(&thrown);
    std::tuple const is{thrown.pathname(), thrown.other_pathnames(), thrown.error_number(),
                        argument == nullptr ? "" : argument->text(), clone != nullptr};
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

testing::AssertionResult fails_with(std::string const& name, named const& names,
                                    std::function<void()> const& call)
{
    if (name == "ok") {
        call();
        return testing::AssertionSuccess();
    }
    using check = testing::AssertionResult (*)(std::function<void()> const&, failure const&);
    static std::map<int, check> const checks{
        {ENOENT, fails<PathNotFound>},        {EACCES, fails<AccessDenied>},
        {EEXIST, fails<FileExistsError>},     {ENOTDIR, fails<NotDirectoryError>},
        {EISDIR, fails<FileIsDirectory>},     {EINVAL, fails<InvalidArgument>},
        {ENOTSUP, fails<InvalidArgument>},    {ENAMETOOLONG, fails<FileNameTooLarge>},
        {ENOTEMPTY, fails<DirectoryNotEmpty>}};
    int const error = number_of(name);
    auto const found = checks.find(error);
    bool const other = found == checks.end();
    failure expected{names.first, {}, other ? error : 0};
    if (other || error == EINVAL || error == ENOTSUP) {
        expected.other_pathnames = {names.second};
    }
    return (other ? fails<SystemError> : found->second)(call, expected);
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
    std::filesystem::current_path("/");
    std::string const name = '\'' + directory_.string() + '\'';
    EXPECT_EQ(std::system(("chmod -R u+rwX " + name + "; rm -rf " + name).c_str()), 0);
}

void run_as(uid_t id, std::function<void()> const& body)
{
    constexpr int skipped = 2;
    std::fflush(nullptr);
    pid_t const child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (id != ::geteuid() && (::setgroups(0, nullptr) != 0 || ::setresgid(id, id, id) != 0 ||
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

thread_local std::function<int(std::string const& call, std::string const& about)> hook;

static bool refused(char const* call, int directory, std::string const& name)
{
    int const before = errno;
    auto const current = std::exchange(hook, nullptr);
    int error = 0;
    if (current) {
        auto const link = "/proc/self/fd/" + std::to_string(directory);
        auto const place = directory == AT_FDCWD ? "" : std::filesystem::read_symlink(link);
        error = current(call, (name.empty() ? place : place / name).string());
    }
    hook = current;
    errno = error == 0 ? before : std::max(error, 0);
    return error != 0;
}

} // namespace nura::filesystem::test

// clang-format off
#define NURA_SYSTEM(result, call, parameters) reinterpret_cast<result (*) parameters>(::dlsym(RTLD_NEXT, #call))
#define NURA_WATCH(result, failed, call, parameters, directory, name, ...) \
    extern "C" result call parameters \
    { \
        return nura::filesystem::test::refused(#call, directory, name) \
                   ? failed : NURA_SYSTEM(result, call, parameters)(__VA_ARGS__); \
    }
NURA_WATCH(int, -1, access, (char const* n, int m) noexcept, AT_FDCWD, n, n, m)
NURA_WATCH(int, -1, chdir, (char const* n) noexcept, AT_FDCWD, n, n)
NURA_WATCH(char*, nullptr, getcwd, (char* b, std::size_t s) noexcept, AT_FDCWD, std::to_string(s), b, s)
NURA_WATCH(int, -1, mkdir, (char const* n, mode_t m) noexcept, AT_FDCWD, n, n, m)
NURA_WATCH(ssize_t, -1, readlink, (char const* n, char* t, std::size_t s) noexcept, AT_FDCWD, n, n, t, s)
NURA_WATCH(int, -1, rename, (char const* a, char const* b) noexcept, AT_FDCWD, a, a, b)
NURA_WATCH(int, -1, utimensat, (int d, char const* n, timespec const* t, int f) noexcept, d, n, d, n, t, f)
NURA_WATCH(int, -1, open, (char const* n, int f, ...), AT_FDCWD, n, n, f, 0600)
NURA_WATCH(int, -1, openat, (int d, char const* n, int f, ...), d, n, d, n, f, 0600)
NURA_WATCH(ssize_t, -1, sendfile, (int to, int d, off_t* at, std::size_t n) noexcept, d, "", to, d, at, n)
NURA_WATCH(int, -1, stat, (char const* n, struct stat* s) noexcept, AT_FDCWD, n, n, s)
NURA_WATCH(int, -1, lstat, (char const* n, struct stat* s) noexcept, AT_FDCWD, n, n, s)
NURA_WATCH(int, -1, fstat, (int d, struct stat* s) noexcept, d, "", d, s)
NURA_WATCH(int, -1, fstatat, (int d, char const* n, struct stat* s, int f) noexcept, d, n, d, n, s, f)
NURA_WATCH(int, -1, unlinkat, (int d, char const* n, int f) noexcept, d, n, d, n, f)
NURA_WATCH(DIR*, nullptr, fdopendir, (int d), d, "", d)
NURA_WATCH(dirent*, nullptr, readdir, (DIR* s), ::dirfd(s), "", s)
NURA_WATCH(int, NURA_SYSTEM(int, closedir, (DIR*))(s) - 1, closedir, (DIR* s), ::dirfd(s), "", s)
#define NURA_CALL(name, ...) {name, on([](auto&& a, [[maybe_unused]] auto&& b) { __VA_ARGS__; })}

namespace nura::filesystem::test {

template <class Call>
static operation on(Call call)
{
    return [=](auto const& from, auto const& to) { return both(call, from, to); };
}

std::map<std::string, operation> const operations{
    NURA_CALL("access", (void)access(a, access_read)), NURA_CALL("permissions", permissions(a, 0600)),
    NURA_CALL("change_current_path", change_current_path(a)), NURA_CALL("space", (void)space(path{a})),
    NURA_CALL("create_directory", create_directory(a)), NURA_CALL("remove", remove(a)),
    NURA_CALL("create_directories", create_directories(a)), NURA_CALL("remove,0", remove(a, 0)),
    NURA_CALL("remove_file", remove_file(a)), NURA_CALL("remove,4000", remove(a, 0x4000)),
    NURA_CALL("remove_symlink", remove_symlink(a)), NURA_CALL("remove,4001", remove(a, 0x4001)),
    NURA_CALL("remove_directory", remove_directory(a)), NURA_CALL("remove_all", remove_all(a)),
    NURA_CALL("create_symlink", create_symlink(a, b)), NURA_CALL("rename", rename(a, b)),
    NURA_CALL("copy_symlink", copy_symlink(a, b)), NURA_CALL("copy_file", copy_file(a, b)),
    NURA_CALL("read_symlink", (void)read_symlink(a)), NURA_CALL("canonical", (void)canonical(a)),
    NURA_CALL("copy_directory", copy_directory(a, b)), // recursive, links as links:
    NURA_CALL("copy", nura::filesystem::copy(a, b, std::filesystem::copy_options{24}))};
// clang-format on

contents listing(std::filesystem::path const& directory)
{
    contents found;
    auto const unreadable = std::filesystem::directory_options::skip_permission_denied;
    for (auto const& entry : std::filesystem::recursive_directory_iterator{directory, unreadable}) {
        auto const status = entry.symlink_status();
        std::ostringstream about;
        about << int(status.type()) << std::oct << ' ' << unsigned(status.permissions()) << ' '
              << (entry.is_symlink() ? std::filesystem::read_symlink(entry).string() : "");
        if (status.type() == std::filesystem::file_type::regular) {
            about << std::ifstream{entry.path()}.rdbuf();
        }
        found[entry.path().lexically_relative(directory).string()] = about.str();
    }
    return found;
}

std::ptrdiff_t open_descriptors()
{
    return std::distance(std::filesystem::directory_iterator{"/proc/self/fd"}, {});
}

std::filesystem::path scene::at_length(std::size_t length, std::string const& start) const
{
    std::string deep = root_.at(start).string();
    while (deep.size() < length) {
        deep += deep.size() % 100 == 0 ? '/' : 'e';
    }
    return deep;
}

std::filesystem::path scene::at(std::string const& entry) const
{
    return entry == "-"      ? ""
           : entry == "1023" ? at_length(1024, "\xC3\xA9")
           : entry == "1024" ? at_length(1024)
                             : root_.at(entry == "LONG" ? std::string(300, 'x') : entry);
}

void scene::populate() const
{
    ::umask(022);
    std::filesystem::remove_all(at(""));
    // A directory, a file in it; the text of a link, and the link.
    for (auto const& [directory, file, text, link] :
         table<4>("empty ../file file to-file  full x full to-full  closed x loop loop  full x - "
                  "dangling")) {
        std::filesystem::create_directories(at(directory));
        std::ofstream{at(directory) / file} << file;
        std::filesystem::create_symlink(text, at(link));
    }
    EXPECT_EQ(::chmod(at("closed").c_str(), 0700) + ::mkfifo(at("fifo").c_str(), 0644), 0);
}

void scene::expect(std::string const& names, std::string const& rows, bool scripted) const
{
    auto const columns = table<1>(names.c_str());
    auto const cells = table<1>(rows.c_str());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::size_t const column = i % (columns.size() + 2);
        std::string const& outcome = cells[i][0];
        std::string const& from = cells[i - column][0];
        std::string const& to = cells[i - column + 1][0];
        for (std::size_t overload = 0; column > 1 && outcome != "*" && overload < 2; ++overload) {
            std::string const& call = columns[column - 2][0];
            SCOPED_TRACE(call + ' ' + from + ' ' + to);
            auto const error = outcome.substr(std::string{"<>-"}.find(outcome[0]) != outcome.npos);
            named const carried{outcome[0] == '-' ? u"" : name(outcome[0] == '>' ? to : from),
                                outcome[0] == '<' ? name(to) : u""};
            contents const before = all();
            contents expected = before;
            hook = [&](std::string const& watched, std::string const&) {
                bool const answered = scripted && (watched == "rename" || watched == "mkdir");
                return answered ? number_of(error) : 0;
            };
            EXPECT_TRUE(
                fails_with(error, carried, operations.at(call)(name(from), name(to))[overload]));
            hook = nullptr;
            for (auto const& [entry, about] : outcome == "ok" ? before : contents{}) {
                bool const below = entry.starts_with(from + '/') && call != "copy_directory";
                if ((entry == from || below) && call.starts_with("re")) {
                    expected.erase(entry);
                }
                if ((entry == from || below) && (call.starts_with("copy") || call == "rename")) {
                    expected[to + entry.substr(from.size())] = about;
                }
            }
            if (outcome == "ok" && call == "create_symlink") {
                expected[to] = "3 777 " + at(from).string();
            }
            for (std::size_t end = 0;
                 outcome == "ok" && call.starts_with("create_d") && end != from.npos;) {
                end = from.find('/', end + 1);
                expected.emplace(from.substr(0, end), "2 755 ");
            }
            EXPECT_EQ(all(), expected);
            outcome == "ok" ? populate() : void();
        }
    }
}

} // namespace nura::filesystem::test
