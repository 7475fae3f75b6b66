// Canonical forms beside the bare system calls and beside the standard library.

#include <filesystem/operations.hpp>

#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace nfs = nura::filesystem;

namespace {

/// A chain of ten directories with names of one unit to ten.
class chain {
public:
    chain()
        : top_{std::filesystem::canonical(std::filesystem::temp_directory_path()) /
               ("nura-benchmark-" + std::to_string(::getpid()))}
    {
        std::filesystem::path bottom = top_;
        for (std::size_t i = 1; i <= 10; ++i) {
            bottom /= std::string(i, 'd');
        }
        std::filesystem::create_directories(bottom);
        existing = bottom.u16string();
    }
    chain(chain const&) = delete;
    chain& operator=(chain const&) = delete;
    ~chain()
    {
        std::error_code ignored;
        std::filesystem::remove_all(top_, ignored);
    }

    std::u16string existing;

private:
    std::filesystem::path top_;
};

std::u16string const& existing()
{
    static chain const directories;
    return directories.existing;
}

std::u16string with_missing(benchmark::State const& state)
{
    std::u16string name = existing();
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        name += u"/missing";
    }
    return name;
}

void canonical_ours(benchmark::State& state)
{
    std::u16string const name = existing();
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::canonical(name));
    }
}
BENCHMARK(canonical_ours);

void canonical_bare(benchmark::State& state)
{
    std::string const name = std::filesystem::path{existing()}.native();
    struct stat found {};
    for (auto _ : state) {
        benchmark::DoNotOptimize(::stat(name.c_str(), &found));
        char* const resolved = ::realpath(name.c_str(), nullptr);
        benchmark::DoNotOptimize(resolved);
        std::free(resolved);
    }
}
BENCHMARK(canonical_bare);

void weakly_canonical_ours(benchmark::State& state)
{
    std::u16string const name = with_missing(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::weakly_canonical(name));
    }
}
BENCHMARK(weakly_canonical_ours)->Arg(1)->Arg(10);

void weakly_canonical_standard(benchmark::State& state)
{
    std::u16string const name = with_missing(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            std::filesystem::weakly_canonical(std::filesystem::path{name}).u16string());
    }
}
BENCHMARK(weakly_canonical_standard)->Arg(1)->Arg(10);

} // namespace
