// Walks over the elements of a path, forwards and backwards, without an allocation.

#include <filesystem/filesystem.hpp>

#include <iostream>

namespace nfs = nura::filesystem;
using namespace nfs::literals;

int main()
{
    nfs::path const p = u"/usr/share/doc/nura.md"_path;

    nfs::path so_far;
    for (std::u16string_view const element : p) {
        so_far /= element;
        std::cout << so_far << '\n';
    }
    for (auto element = p.rbegin(); element != p.rend(); ++element) {
        std::cout << nfs::path::display(*element)
                  << (std::next(element) == p.rend() ? "\n" : " < ");
    }
    std::cout << nfs::path::display(p.stem()) << " + " << nfs::path::display(p.extension()) << '\n';
}
