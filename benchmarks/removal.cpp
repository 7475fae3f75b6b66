// Removal of whole trees beside the standard library and rm, on a file system in memory. Each
// iteration removes a new tree; building it is not timed.

#include <filesystem/operations.hpp>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace nfs = nura::filesystem;

namespace {

constexpr int flat_entries = 10'000;
constexpr int chain_depth = 500;

std::string tree_name()
{
    return "/dev/shm/nura-benchmark-" + std::to_string(::getpid());
}

void build_flat()
{
    std::string const top = tree_name();
    ::mkdir(top.c_str(), 0700);
    int const held = ::open(top.c_str(), O_PATH | O_DIRECTORY);
    for (int i = 0; i < flat_entries; ++i) {
        ::mknodat(held, ("file-" + std::to_string(i)).c_str(), S_IFREG | 0600, 0);
    }
    ::close(held);
}

void build_chain()
{
    std::string const top = tree_name();
    ::mkdir(top.c_str(), 0700);
    int held = ::open(top.c_str(), O_PATH | O_DIRECTORY);
    for (int i = 1; i < chain_depth; ++i) {
        ::mkdirat(held, "d", 0700);
        int const below = ::openat(held, "d", O_PATH | O_DIRECTORY);
        ::close(held);
        held = below;
    }
    ::close(held);
}

void remove_ours()
{
    std::string const top = tree_name();
    nfs::remove_all(std::u16string(top.begin(), top.end()));
}

void remove_standard()
{
    std::filesystem::remove_all(tree_name());
}

void remove_by_rm()
{
    if (std::system(("rm -rf " + tree_name()).c_str()) != 0) { // NOLINT: a fixed command
        std::abort();
    }
}

template <void (*build)(), void (*removal)()>
void remove_tree(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        build();
        state.ResumeTiming();
        removal();
    }
}

void declare(char const* name, void (*measured)(benchmark::State&), int iterations)
{
    benchmark::RegisterBenchmark(name, measured)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(iterations);
}

[[maybe_unused]] bool const declared = [] {
    declare("remove_all_flat_ours", remove_tree<build_flat, remove_ours>, 3);
    declare("remove_all_flat_standard", remove_tree<build_flat, remove_standard>, 3);
    declare("remove_all_flat_rm", remove_tree<build_flat, remove_by_rm>, 3);
    declare("remove_all_chain_ours", remove_tree<build_chain, remove_ours>, 20);
    declare("remove_all_chain_standard", remove_tree<build_chain, remove_standard>, 20);
    declare("remove_all_chain_rm", remove_tree<build_chain, remove_by_rm>, 20);
    return true;
}();

} // namespace
