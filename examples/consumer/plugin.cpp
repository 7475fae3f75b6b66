#include <filesystem/operations.hpp>

extern "C" bool plugin_finds(char16_t const* name)
{
    return nura::filesystem::exists(nura::filesystem::path{name});
}
