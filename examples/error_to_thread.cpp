// Carries a failure from a worker to the thread that asked, with its type and pathname.

#include <filesystem/filesystem.hpp>

#include <exception>
#include <iostream>
#include <thread>

namespace nfs = nura::filesystem;

int main()
{
    std::exception_ptr failure;
    std::thread worker{[&] {
        try {
            nfs::remove_directory(u"/no/such/папка");
        } catch (...) {
            failure = std::current_exception(); // boost::current_exception works as well
        }
    }};
    worker.join();
    try {
        std::rethrow_exception(failure);
    } catch (nfs::PathNotFound const& e) {
        std::cout << e.what() << '\n' << nfs::describe(e) << '\n';
    }
}
