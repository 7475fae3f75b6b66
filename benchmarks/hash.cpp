#include <filesystem/basic_path.hpp>

#include <benchmark/benchmark.h>

#include <string>

extern "C" std::size_t llvm_hash(char16_t const* text, std::size_t length);

namespace nfs = nura::filesystem;

namespace {

nfs::path path_of_length(benchmark::State const& state)
{
    return nfs::path{std::u16string(static_cast<std::size_t>(state.range(0)), u'p')};
}

void hash_ours(benchmark::State& state)
{
    nfs::path const p = path_of_length(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::hash<nfs::path>{}(p));
    }
}
BENCHMARK(hash_ours)->Arg(8)->Arg(16)->Arg(32)->Arg(65)->Arg(250);

void hash_llvm(benchmark::State& state)
{
    nfs::path const p = path_of_length(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(llvm_hash(p.pathname().data(), p.pathname().size()));
    }
}
BENCHMARK(hash_llvm)->Arg(8)->Arg(16)->Arg(32)->Arg(65)->Arg(250);

} // namespace
