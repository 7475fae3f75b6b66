#include "pathname/city_hash.hpp"

#include <bit>
#include <cstddef>
#include <cstring>
#include <utility>

namespace nura::filesystem::detail {

namespace {

using word64 = std::uint64_t;

constexpr word64 k0 = 0xc3a5c85c97cb3127;
constexpr word64 k1 = 0xb492b66fbe98f273;
constexpr word64 k2 = 0x9ae16a3b2f90404f;
constexpr word64 k3 = 0xc949d7c7509e6557;
constexpr word64 multiplier = 0x9ddfea08eb382d69;

constexpr word64 rotate(word64 x, int count)
{
    return std::rotr(x, count);
}

constexpr word64 shift_mix(word64 x)
{
    return x ^ (x >> 47);
}

constexpr word64 mix(word64 u, word64 v)
{
    word64 const a = shift_mix((u ^ v) * multiplier);
    word64 const b = shift_mix((v ^ a) * multiplier);
    return b * multiplier;
}

struct pair {
    word64 first;
    word64 second;
};

/// The bytes of UTF-16 text in little-endian order. Positions count bytes and are even where
/// more than one byte is read.
class bytes {
public:
    explicit bytes(std::u16string_view text) noexcept
        : units_{text.data()}, size_{word64{2} * text.size()}
    {
    }

    [[nodiscard]] word64 size() const { return size_; }

    [[nodiscard]] std::uint32_t byte(word64 at) const
    {
        return (static_cast<std::uint32_t>(units_[at / 2]) >> (8 * (at % 2))) & 0xFFU;
    }

    [[nodiscard]] std::uint32_t word32(word64 at) const { return load<std::uint32_t>(at); }
    [[nodiscard]] word64 word(word64 at) const { return load<word64>(at); }

private:
    template <class Word>
    [[nodiscard]] Word load(word64 at) const
    {
        char16_t const* const units = units_ + at / 2;
        Word word = 0;
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(&word, units, sizeof word);
        } else {
            for (std::size_t i = 0; i < sizeof word / 2; ++i) {
                word |= static_cast<Word>(units[i]) << (16 * i);
            }
        }
        return word;
    }

    char16_t const* units_;
    word64 size_;
};

pair weak(bytes const& s, word64 at, word64 a, word64 b)
{
    a += s.word(at);
    b = rotate(b + a + s.word(at + 24), 21);
    word64 const c = a;
    a += s.word(at + 8);
    a += s.word(at + 16);
    b += rotate(a, 44);
    return {a + s.word(at + 24), b + c};
}

word64 hash_0_to_16(bytes const& s)
{
    word64 const n = s.size(); // 64 bits wide on every platform, and so is what is added to it
    if (n > 8) {
        word64 const a = s.word(0);
        word64 const b = s.word(n - 8);
        return mix(a, rotate(b + n, static_cast<int>(n))) ^ b;
    }
    if (n >= 4) {
        std::uint32_t const a = s.word32(0) << 3; // what is carried out of 32 bits is lost
        return mix(n + a, s.word32(n - 4));
    }
    if (n > 0) {
        std::uint32_t const y = s.byte(0) + (s.byte(n / 2) << 8);
        std::uint32_t const z = static_cast<std::uint32_t>(n) + (s.byte(n - 1) << 2);
        return shift_mix(y * k2 ^ z * k3) * k2;
    }
    return k2;
}

word64 hash_17_to_32(bytes const& s)
{
    word64 const n = s.size();
    word64 const a = s.word(0) * k1;
    word64 const b = s.word(8);
    word64 const c = s.word(n - 8) * k2;
    word64 const d = s.word(n - 16) * k0;
    return mix(rotate(a - b, 43) + rotate(c, 30) + d, a + rotate(b ^ k3, 20) - c + n);
}

/// One half of the hash of 33 to 64 bytes: mixes two words already combined in `a` with the
/// words at `second`, `third` and `a`'s partner `z`.
pair fold(word64 a, word64 z, word64 second, word64 third)
{
    word64 b = rotate(a + z, 52);
    word64 c = rotate(a, 37);
    a += second;
    c += rotate(a, 7);
    a += third;
    return {a + z, b + rotate(a, 31) + c};
}

word64 hash_33_to_64(bytes const& s)
{
    word64 const n = s.size();
    word64 const z = s.word(24);
    pair const v = fold(s.word(0) + (n + s.word(n - 16)) * k0, z, s.word(8), s.word(16));
    pair const w =
        fold(s.word(16) + s.word(n - 32), z + s.word(n - 8), s.word(n - 24), s.word(n - 16));
    word64 const r = shift_mix((v.first + w.second) * k2 + (w.first + v.second) * k0);
    return shift_mix(r * k0 + v.second) * k2;
}

word64 hash_above_64(bytes const& s)
{
    word64 const n = s.size();
    word64 x = s.word(n - 40);
    word64 y = s.word(n - 16) + s.word(n - 56);
    word64 z = mix(s.word(n - 48) + n, s.word(n - 24));
    pair v = weak(s, n - 64, n, z);
    pair w = weak(s, n - 32, y + k1, x);
    x = x * k1 + s.word(0);
    word64 const blocks_end = (n - 1) & ~word64{63};
    for (word64 at = 0; at < blocks_end; at += 64) {
        x = rotate(x + y + v.first + s.word(at + 8), 37) * k1;
        y = rotate(y + v.second + s.word(at + 48), 42) * k1;
        x ^= w.second;
        y += v.first + s.word(at + 40);
        z = rotate(z + w.first, 33) * k1;
        v = weak(s, at, v.second * k1, x + w.first);
        // The published algorithm adds w.second here, not y.
        w = weak(s, at + 32, z + w.second, y + s.word(at + 16));
        std::swap(z, x);
    }
    return mix(mix(v.first, w.first) + shift_mix(y) * k1 + z, mix(v.second, w.second) + x);
}

} // namespace

std::uint64_t city_hash(std::u16string_view text) noexcept
{
    bytes const s{text};
    if (s.size() <= 16) {
        return hash_0_to_16(s);
    }
    if (s.size() <= 32) {
        return hash_17_to_32(s);
    }
    return s.size() <= 64 ? hash_33_to_64(s) : hash_above_64(s);
}

} // namespace nura::filesystem::detail
