// Prints hash_vectors.inc. Build it with LLVM's standard library, whose hash the values witness:
//     clang++ -std=c++20 -stdlib=libc++ record_hash_vectors.cpp -o record_hash_vectors

#include <iostream>
#include <random>

#if !defined(_LIBCPP_VERSION)
#    error "the values are those of LLVM's standard library"
#endif

int main()
{
    std::mt19937 units{2024};
    std::cout << std::hex << std::showbase;
    for (std::u16string text; text.size() <= 300; text += static_cast<char16_t>(units())) {
        std::cout << std::hash<std::u16string>{}(text) << (text.size() % 24 == 23 ? ",\n" : ", ");
    }
}
