// Joins a name from outside to a directory of ours: an absolute tail is refused by the library,
// and ".." by us, since dot elements are names to it like any other.

#include <filesystem/filesystem.hpp>

#include <algorithm>
#include <iostream>
#include <optional>

namespace nfs = nura::filesystem;

std::optional<nfs::path> below(nfs::path const& directory, nfs::path const& untrusted)
{
    if (std::find(untrusted.begin(), untrusted.end(), u"..") != untrusted.end()) {
        return std::nullopt;
    }
    try {
        return directory / untrusted;
    } catch (nfs::InvalidArgument const&) {
        return std::nullopt; // absolute
    }
}

int main()
{
    nfs::path const uploads{u"/srv/uploads"};
    for (char16_t const* const name : {u"a/b.txt", u"/etc/passwd", u"a/../../x", u"~root/x"}) {
        // The switch is off: what others send has no home directory here.
        nfs::path const untrusted{name, false};
        std::optional<nfs::path> const joined = below(uploads, untrusted);
        std::cout << untrusted << " -> " << (joined ? joined->display() : "refused") << '\n';
    }
}
