#pragma once

#include <cstdint>
#include <string_view>

namespace nura::filesystem::detail {

/// 64-bit CityHash 1.0 of the UTF-16LE bytes of `text`: the value that LLVM's standard library
/// gives for `std::hash<std::u16string>` on 64-bit targets, on every platform.
std::uint64_t city_hash(std::u16string_view text) noexcept;

} // namespace nura::filesystem::detail
