#pragma once

/// \file
/// What the tests of operations that change files share: every operation by its name, a scene on
/// which its outcome and its effect are checked, and a hook in the system calls.

#include "support.hpp"

#include <filesystem/operations.hpp>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <map>

namespace nura::filesystem::test {

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

/// Runs `body` in a forked child whose mounts no other process sees, and which end with it; skips
/// where the process may not mount. `read_only` cannot be written there.
void run_with_own_mounts(std::string const& read_only, std::function<void()> const& body);

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
    state_of_process state_;
    temporary_root root_;
};

} // namespace nura::filesystem::test
