#include <cstddef>
#include <functional>
#include <string_view>

extern "C" __attribute__((visibility("default"))) std::size_t llvm_hash(char16_t const* text,
                                                                        std::size_t length)
{
    return std::hash<std::u16string_view>{}(std::u16string_view{text, length});
}
