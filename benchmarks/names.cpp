// Conversion, native form, decomposition and walks, each beside the least that could do the work.

#include <filesystem/basic_path.hpp>

#include <benchmark/benchmark.h>
#include <iconv.h>

#include <cstring>
#include <filesystem>
#include <string>

namespace nfs = nura::filesystem;

namespace {

// 64 and 65 units.
std::u16string const name_64 = u"/home/user/projects/nura/include/filesystem/pathname_traits.hppx";
std::u16string const clean = u"/home/user/projects/nura/include/filesystem/pathname_grammar.hppx";
std::u16string const dirty = u"/home//user/projects/nura/include///filesystem/pathname_traits.h/";
std::u16string const scripts =
    u"/домашняя/папка/проекты/文件系统/ファイル/été/Ελληνικά/documents/αρχείο.txt";

void conversion_ours(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::detail::to_filesystem(name_64));
    }
}
BENCHMARK(conversion_ours);

void conversion_string(benchmark::State& state)
{
    std::string const bytes(name_64.begin(), name_64.end());
    char const* data = bytes.data();
    std::size_t size = bytes.size();
    benchmark::DoNotOptimize(data);
    benchmark::DoNotOptimize(size);
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::string(data, size));
    }
}
BENCHMARK(conversion_string);

void conversion_standard(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::filesystem::path(name_64));
    }
}
BENCHMARK(conversion_standard);

void conversion_scripts_ours(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::detail::to_filesystem(scripts));
    }
}
BENCHMARK(conversion_scripts_ours);

void conversion_scripts_iconv(benchmark::State& state)
{
    iconv_t const converter = ::iconv_open("UTF-8", "UTF-16LE");
    std::u16string input = scripts;
    char buffer[1024];
    for (auto _ : state) {
        char* in = reinterpret_cast<char*>(input.data());
        std::size_t in_left = 2 * input.size();
        char* out = buffer;
        std::size_t out_left = sizeof buffer;
        benchmark::DoNotOptimize(::iconv(converter, &in, &in_left, &out, &out_left));
        ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
        benchmark::ClobberMemory();
    }
    ::iconv_close(converter);
}
BENCHMARK(conversion_scripts_iconv);

void native_form_clean(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::detail::make_native_form(clean, true));
    }
}
BENCHMARK(native_form_clean);

void native_form_dirty(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::detail::make_native_form(dirty, true));
    }
}
BENCHMARK(native_form_dirty);

void native_form_copy(benchmark::State& state)
{
    std::u16string const* text = &clean;
    benchmark::DoNotOptimize(text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::u16string(*text));
    }
}
BENCHMARK(native_form_copy);

void parent_ours(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::detail::extract_parent_path(clean));
    }
}
BENCHMARK(parent_ours);

void parent_find_last_of(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(clean.substr(0, clean.find_last_of(u'/')));
    }
}
BENCHMARK(parent_find_last_of);

void filename_ours(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(nfs::detail::extract_filename(clean));
    }
}
BENCHMARK(filename_ours);

void filename_find_last_of(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(clean.substr(clean.find_last_of(u'/') + 1));
    }
}
BENCHMARK(filename_find_last_of);

void walk_iterator(benchmark::State& state)
{
    nfs::path const p{clean};
    for (auto _ : state) {
        for (std::u16string_view const element : p) {
            benchmark::DoNotOptimize(element.data());
            benchmark::DoNotOptimize(element.size());
        }
    }
}
BENCHMARK(walk_iterator);

void walk_find(benchmark::State& state)
{
    std::u16string_view const text = clean;
    for (auto _ : state) {
        benchmark::DoNotOptimize(text.data());
        benchmark::DoNotOptimize(std::size_t{1}); // the root
        for (std::size_t start = 1; start < text.size();) {
            std::size_t const end = std::min(text.find(u'/', start), text.size());
            std::u16string_view const element = text.substr(start, end - start);
            benchmark::DoNotOptimize(element.data());
            benchmark::DoNotOptimize(element.size());
            start = end + 1;
        }
    }
}
BENCHMARK(walk_find);

void walk_strings_ours(benchmark::State& state)
{
    for (auto _ : state) {
        std::size_t const root = nfs::detail::get_root_path_length(clean);
        std::size_t pos = 0;
        std::u16string element = nfs::detail::extract_first_element(clean, root);
        while (pos < clean.size()) {
            benchmark::DoNotOptimize(element.data());
            nfs::detail::move_down(clean, root, pos, element);
        }
    }
}
BENCHMARK(walk_strings_ours);

void walk_strings_find(benchmark::State& state)
{
    for (auto _ : state) {
        std::u16string element = clean.substr(0, 1);
        benchmark::DoNotOptimize(element.data());
        for (std::size_t start = 1; start < clean.size();) {
            std::size_t const end = std::min(clean.find(u'/', start), clean.size());
            element.assign(clean, start, end - start);
            benchmark::DoNotOptimize(element.data());
            start = end + 1;
        }
    }
}
BENCHMARK(walk_strings_find);

} // namespace
