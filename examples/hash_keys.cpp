// Paths as keys: what names the same in native form is the same key, and the hash is fixed for all
// time on 64-bit systems, so that it may be stored.

#include <filesystem/filesystem.hpp>

#include <iostream>
#include <unordered_map>

namespace nfs = nura::filesystem;
using namespace nfs::literals;

int main()
{
    std::unordered_map<nfs::path, int> opened;
    for (nfs::path const& p : {u"/a/b"_path, u"//a///b/"_path, u"/a/./b"_path}) {
        ++opened[p];
    }
    std::cout << u"/a/b"_path << ": " << opened[u"/a/b"_path] << '\n'
              << u"/a/./b"_path << ": " << opened[u"/a/./b"_path] << '\n'
              << std::hex << std::hash<nfs::path>{}(u"/a/b"_path) << '\n';
}
