#include <filesystem/filesystem.hpp>

#include <filesystem>
#include <iostream>

namespace nfs = nura::filesystem;

int main()
{
    nfs::path const p = nfs::path{u"//usr//"} / u"no such thing";
    std::cout << p << (nfs::exists(p) ? " is there\n" : " is not there\n");
    try {
        static_cast<void>(nfs::status(u"/etc/passwd/below"));
    } catch (nfs::NotDirectoryError const& e) {
        std::cout << nfs::describe(e, u"/etc/passwd/below") << '\n';
        return std::filesystem::exists("/usr") ? 0 : 1;
    }
    return 1;
}
