// Names a file, asks for it, and understands the failure.

#include <filesystem/filesystem.hpp>

#include <iostream>

namespace nfs = nura::filesystem;

int main()
{
    nfs::path const notes = nfs::path{u"/tmp//Notizen/été/"} / u"文.txt";
    std::cout << notes << " has " << notes.pathname().size() << " UTF-16 code units\n";
    for (std::u16string_view const element : notes) {
        std::cout << "  " << nfs::path::display(element) << '\n';
    }
    std::cout << "exists: " << std::boolalpha << nfs::exists(notes) << '\n';
    try {
        nfs::remove_file(notes);
    } catch (nfs::PathNotFound const& e) {
        std::cout << nfs::describe(e) << '\n';
    }
}
