// Makes sure that a directory exists. create_directories reports one that was there already, so
// that whoever must create it can tell; here that is as good.

#include "scratch.hpp"

#include <fstream>
#include <iostream>

namespace nfs = nura::filesystem;

bool ensure_directory(nfs::path const& p)
{
    try {
        nfs::create_directories(p);
        return true;
    } catch (nfs::FileExistsError const&) {
        if (nfs::status(p).is_directory()) {
            return false;
        }
        throw;
    }
}

int main()
{
    scratch const here;
    nfs::path const logs{u"var/журнал/2026"};
    std::cout << "created: " << std::boolalpha << ensure_directory(logs) << '\n';
    std::cout << "created: " << ensure_directory(logs) << '\n';
    std::ofstream{"file"} << "in the way";
    try {
        ensure_directory(nfs::path{u"file/below"});
    } catch (nfs::FsysExceptionBase const& e) {
        std::cout << nfs::describe(e) << '\n';
    }
}
