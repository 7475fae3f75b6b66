#pragma once

#include <filesystem/pathname_traits.hpp>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

/// Looking for separators, sixteen units at a time: pathnames are short, and what costs is to
/// take them unit by unit.
namespace nura::filesystem::detail::grammar {

template <class Char>
constexpr Char separator = pathname_traits<Char>::PATHNAME_SEPARATOR_CHARACTER;

inline constexpr std::size_t group_length = 16;

/// One bit for each of the 16 units at `at`, the lowest for the first: set for separators.
template <class Char>
std::uint32_t separators_in_group(Char const* at)
{
#if defined(__SSE2__)
    auto const* const blocks = reinterpret_cast<__m128i const*>(at);
    if constexpr (sizeof(Char) == 1) {
        __m128i const found =
            _mm_cmpeq_epi8(_mm_loadu_si128(blocks), _mm_set1_epi8(separator<char>));
        return static_cast<std::uint32_t>(_mm_movemask_epi8(found));
    } else {
        static_assert(sizeof(Char) == 2);
        __m128i const wanted = _mm_set1_epi16(separator<char16_t>);
        __m128i const low = _mm_cmpeq_epi16(_mm_loadu_si128(blocks), wanted);
        __m128i const high = _mm_cmpeq_epi16(_mm_loadu_si128(blocks + 1), wanted);
        return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
    }
#else
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < group_length; ++i) {
        bits |= static_cast<std::uint32_t>(at[i] == separator<Char>) << i;
    }
    return bits;
#endif
}

/// Looks at `p` in groups: `p[0, 16)`, `p[16, 32)` and so on.
template <class Char>
class separator_scan {
public:
    explicit separator_scan(std::basic_string_view<Char> p) noexcept : p_{p} {}

    /// The separators of the group that begins at `start`, a bit for each unit; none are set
    /// for units behind the end of the text.
    [[nodiscard]] std::uint32_t in_group(std::size_t start) const
    {
        std::size_t const left = p_.size() - start;
        if (left >= group_length) {
            return separators_in_group(p_.data() + start);
        }
        if (p_.size() >= group_length) {
            // The last group reads units of the one before, too.
            return separators_in_group(p_.data() + p_.size() - group_length) >>
                   (group_length - left);
        }
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < left; ++i) {
            bits |= static_cast<std::uint32_t>(p_[start + i] == separator<Char>) << i;
        }
        return bits;
    }

    /// The separators of the group at `start` that follow another one. Groups must be visited
    /// in order.
    [[nodiscard]] std::uint32_t doubled_in_group(std::size_t start)
    {
        std::uint32_t const bits = in_group(start);
        std::uint32_t const doubled = bits & (bits << 1 | before_);
        before_ = bits >> (group_length - 1);
        return doubled;
    }

private:
    std::basic_string_view<Char> p_;
    std::uint32_t before_ = 0; ///< whether the group before ended in a separator
};

/// Where the first separator at or after `start` is, or the length of `p`.
template <class Char>
std::size_t next_separator(std::basic_string_view<Char> p, std::size_t start)
{
    std::size_t at = start;
    for (; at + group_length <= p.size(); at += group_length) {
        std::uint32_t const bits = separators_in_group(p.data() + at);
        if (bits != 0) {
            return at + static_cast<std::size_t>(std::countr_zero(bits));
        }
    }
    while (at < p.size() && p[at] != separator<Char>) {
        ++at;
    }
    return at;
}

/// Where the last separator of `p` is, or `npos`.
template <class Char>
std::size_t last_separator(std::basic_string_view<Char> p)
{
    std::size_t end = p.size();
    for (; end >= group_length; end -= group_length) {
        std::uint32_t const bits = separators_in_group(p.data() + end - group_length);
        if (bits != 0) {
            return end - group_length + static_cast<std::size_t>(std::bit_width(bits)) - 1;
        }
    }
    return p.substr(0, end).rfind(separator<Char>);
}

/// True if a separator in `p` follows another one.
template <class Char>
bool has_doubled_separator(std::basic_string_view<Char> p)
{
    separator_scan<Char> scan{p};
    std::uint32_t doubled = 0;
    for (std::size_t start = 0; start < p.size(); start += group_length) {
        doubled |= scan.doubled_in_group(start); // no way out early: pathnames are usually clean
    }
    return doubled != 0;
}

} // namespace nura::filesystem::detail::grammar
