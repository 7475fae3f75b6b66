#include <filesystem/basic_path.hpp>

#include <boost/functional/hash.hpp>
#include <gtest/gtest.h>

#include <random>

namespace nura::filesystem::test {

// std::hash<std::u16string> of LLVM's standard library, recorded by record_hash_vectors.cpp.
constexpr std::uint64_t recorded_hashes[]{
#include "hash_vectors.inc"
};

TEST(path_hash, is_the_recorded_one_whatever_the_length_and_the_tilde_switch)
{
    static_assert(noexcept(std::hash<path>{}(path{})) && std::size(recorded_hashes) == 301);
    std::mt19937 units{2024};
    std::u16string text;
    for (std::uint64_t const expected : recorded_hashes) {
        ASSERT_EQ(path(text).pathname(), text) << "the recorded text is not in native form";
        EXPECT_EQ(std::hash<path>{}(path{text, true}), expected) << text.size() << " units";
        EXPECT_EQ(boost::hash<path>{}(path{text, false}), expected);
        text += static_cast<char16_t>(units());
    }
}

} // namespace nura::filesystem::test
