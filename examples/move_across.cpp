// Moves a tree to another file system and keeps the times of its files.

#include "scratch.hpp"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace nfs = nura::filesystem;

int main()
{
    scratch const memory{::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/var/tmp"};
    nfs::path const source = memory.directory() / u"photos";
    scratch const disk{"/tmp"};

    nfs::create_directories(source / u"été");
    std::filesystem::path const photo{source / u"été/plage.jpg"};
    std::ofstream{photo} << "sand";
    std::filesystem::last_write_time(photo, std::filesystem::file_time_type{} +
                                                std::chrono::seconds{1'000'000'000});
    auto const before = nfs::status(source / u"été/plage.jpg").modification_time();

    nfs::path const target{u"moved"};
    nfs::rename(source, target, nfs::rename_options{true});

    std::cout << std::boolalpha << "source left: " << nfs::exists(source) << '\n'
              << "same time: "
              << (nfs::status(target / u"été/plage.jpg").modification_time() == before) << '\n';
    try {
        nfs::rename(source, target);
    } catch (nfs::PathNotFound const& e) {
        std::cout << "again: " << nfs::path::display(nfs::path{e.pathname(), false}.filename())
                  << " is missing\n";
    }
}
