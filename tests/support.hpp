#pragma once

/// \file
/// What the tests share: a place in the file system, the state of the process, a child with other
/// rights, tables, one way to expect a failure, and for the tests of operations that change files
/// every one of them by its name, a scene to check them on and a hook in the system calls.

#include <filesystem/exceptions.hpp>
#include <filesystem/operations.hpp>

#include <boost/core/noncopyable.hpp>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace nura::filesystem::test {

/// What a failing call is expected to report.
struct failure {
    std::u16string pathname{};
    std::vector<std::u16string> other_pathnames{};
    int error_number = 0;
    std::string text{}; ///< of an `InvalidArgument`
};

/// Whether `thrown` reports `expected` and was thrown in the wrapper that makes it cloneable.
[[nodiscard]] testing::AssertionResult reports(FsysExceptionBase const& thrown,
                                               failure const& expected);

/// Whether `call` throws an `Exception` that reports `expected`.
template <class Exception>
[[nodiscard]] testing::AssertionResult fails(std::function<void()> const& call,
                                             failure const& expected = {})
{
    try {
        call();
    } catch (Exception const& thrown) {
        return reports(thrown, expected);
    } catch (std::exception const& other) {
        return testing::AssertionFailure() << "another exception: " << other.what();
    }
    return testing::AssertionFailure() << "nothing was thrown";
}

/// The number of an error by its name; of "ok", which is none, 0.
int number_of(std::string const& error);

/// The pathnames that a failure of the system is to name, the second where the type has room.
struct named {
    std::u16string first{};
    std::u16string second{};
};

/// Whether `call` fails as the error of a system call leads to; "ok" is no error.
testing::AssertionResult fails_with(std::string const& error, named const& names,
                                    std::function<void()> const& call);

/// The same of both calls of an operation.
using overloads = std::array<std::function<void()>, 2>;
testing::AssertionResult fails_with(std::string const& error, named const& names,
                                    overloads const& calls);

/// The failure of the operations that refuse an empty pathname.
inline failure const empty_refused{{}, {}, 0, "Empty Path not permitted"};

/// A directory that anyone may search, with a canonical name. It goes with all that is in it,
/// whatever the modes have become, and is the current directory no longer.
class temporary_root : boost::noncopyable {
public:
    explicit temporary_root(
        std::filesystem::path const& below = std::filesystem::temp_directory_path());
    ~temporary_root();

    /// An entry as the standard library names it, and in UTF-16.
    std::filesystem::path at(std::string_view entry) const { return directory_ / entry; }
    std::u16string name(std::string_view entry) const { return at(entry).u16string(); }

private:
    std::filesystem::path directory_;
};

/// Where there may be another file system, in memory.
inline char const* const elsewhere = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";

constexpr uid_t nobody = 65534;

/// Runs `body` in a forked child with the rights of user and group `id`. A failure or a skip in
/// the child is one of the calling test; skips where the process may not become that user.
void run_as(uid_t id, std::function<void()> const& body);

/// Calls `visit` with `text` and every text that up to `longest` more units of `alphabet` make
/// of it, until the test has failed.
template <class String, class Visit>
void visit_texts(String const& alphabet, int longest, Visit const& visit, String const& text = {})
{
    visit(text);
    for (auto const unit : alphabet) {
        if (longest > 0 && !testing::Test::HasFailure()) {
            visit_texts(alphabet, longest - 1, visit, text + unit);
        }
    }
}

/// The rows of a table whose cells stand between blanks; `''` is the empty cell.
template <std::size_t Columns>
std::vector<std::array<std::string, Columns>> table(std::string const& text)
{
    std::vector<std::array<std::string, Columns>> rows;
    std::array<std::string, Columns> row;
    for (std::istringstream cells{text}; !(cells >> std::ws).eof(); rows.push_back(row)) {
        for (std::string& cell : row) {
            EXPECT_TRUE(cells >> cell) << "the last row is too short";
            cell = cell == "''" ? "" : cell;
        }
    }
    return rows;
}

inline bool const long_run = std::getenv("NURA_LONG_TESTS") != nullptr;

/// `ascii` as UTF-16.
inline std::u16string u16(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

/// What runs on this thread before each system call that is watched: it is told the call and the
/// pathname that the call is about (of `getcwd` the size), and gives the error to answer in place
/// of the system, 0 for none, or -1 for a failure that leaves `errno` at 0.
extern thread_local std::function<int(std::string const& call, std::string const& about)> hook;

/// The calls of an operation on `path`s, and on strings of which none is in native form.
template <class Call, class... Names>
overloads both(Call call, Names const&... names)
{
    auto const loosely = [](std::u16string const& name) {
        return name.empty() ? name : (name[0] == u'/' ? u"/" : u"") + name + u"//";
    };
    return {[=] { call(path(names, false)...); }, [=] { call(loosely(names)...); }};
}

/// Every operation by its name, with its flags. Those on one name ignore the second.
using operation = std::function<overloads(std::u16string const&, std::u16string const&)>;
extern std::map<std::string, operation> const operations;

/// All that is below `directory`, each with its mode and its contents or the text of the link.
using contents = std::map<std::string, std::string>;
contents listing(std::filesystem::path const& directory);

/// How many descriptors the process has open.
std::ptrdiff_t open_descriptors();

/// A directory with file, empty/, full/x, closed/x (only root may enter closed), fifo, and the
/// links to-file, to-full, dangling and loop.
class scene {
public:
    explicit scene(char const* below = "/tmp") : root_{below} { populate(); }

    /// "-" is the empty name, "LONG" one that is too long; "1023" and "1024" are names of as many
    /// UTF-16 units, and both of 1,024 bytes.
    std::filesystem::path at(std::string const& entry) const;
    /// A name of deep directories, of so many bytes.
    std::filesystem::path at_length(std::size_t length, std::string const& start = "e") const;
    std::u16string name(std::string const& entry) const { return at(entry).u16string(); }
    contents all() const { return listing(at("")); }
    void populate() const;

    /// Expects what `rows` say: each names two entries, and for each of the operations called
    /// `names` what comes of it: "ok", or an error that names the first entry, with '>' before it
    /// the second, with '<' both, with '-' none; '*' is not tried. A failure must change nothing,
    /// a success what it is for and nothing else. Where it is `scripted`, `rename` and `mkdir`
    /// answer the error without looking.
    void expect(std::string const& names, std::string const& rows, bool scripted = false) const;

private:
    temporary_root root_;
};

} // namespace nura::filesystem::test
