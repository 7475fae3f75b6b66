// Status queries beside the bare system call on the ready name.

#include <filesystem/operations.hpp>

#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace nfs = nura::filesystem;

namespace {

/// A file and a missing name of about 65 units each, in a directory of their own.
class scratch {
public:
    scratch()
    {
        std::filesystem::path const base = std::filesystem::temp_directory_path() /
                                           ("nura-benchmark-" + std::to_string(::getpid()));
        root_ = base;
        std::filesystem::create_directories(root_);
        std::string const tail(65 - root_.native().size() - 2, 'n');
        found = (root_ / (tail + 'f')).u16string();
        missing = (root_ / (tail + 'm')).u16string();
        std::ofstream{std::filesystem::path{found}} << "contents";
    }
    scratch(scratch const&) = delete;
    scratch& operator=(scratch const&) = delete;
    ~scratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    std::u16string found;
    std::u16string missing;

private:
    std::filesystem::path root_;
};

std::u16string const& name(benchmark::State const& state)
{
    static scratch const files;
    return state.range(0) != 0 ? files.found : files.missing;
}

void exists_path(benchmark::State& state)
{
    nfs::path const p{name(state)};
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::exists(p));
    }
}
BENCHMARK(exists_path)->Arg(1)->Arg(0);

void exists_string(benchmark::State& state)
{
    std::u16string const p = name(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::exists(p));
    }
}
BENCHMARK(exists_string)->Arg(1)->Arg(0);

void status_path(benchmark::State& state)
{
    nfs::path const p{name(state)};
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::status(p));
    }
}
BENCHMARK(status_path)->Arg(1)->Arg(0);

void status_string(benchmark::State& state)
{
    std::u16string const p = name(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::status(p));
    }
}
BENCHMARK(status_string)->Arg(1)->Arg(0);

void bare_stat(benchmark::State& state)
{
    std::string const native = std::filesystem::path{name(state)}.native();
    struct stat found {};
    for (auto _ : state) {
        benchmark::DoNotOptimize(::stat(native.c_str(), &found));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(bare_stat)->Arg(1)->Arg(0);

} // namespace
