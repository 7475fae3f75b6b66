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

/// The separators of `p` from `start` on, where less than a group is left.
template <class Char>
std::uint32_t separators_at_end(std::basic_string_view<Char> p, std::size_t start)
{
    std::size_t const left = p.size() - start;
    if (p.size() >= group_length) {
        // The last group reads units of the one before, too.
        return separators_in_group(p.data() + p.size() - group_length) >> (group_length - left);
    }
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < left; ++i) {
        bits |= static_cast<std::uint32_t>(p[start + i] == separator<Char>) << i;
    }
    return bits;
}

/// Of the separators of a group, those that follow another one. `last` says whether the group
/// before ended in a separator, and is brought up to date.
inline std::uint32_t doubled_in_group(std::uint32_t separators, std::uint32_t& last)
{
    std::uint32_t const doubled = separators & (separators << 1 | last);
    last = separators >> (group_length - 1);
    return doubled;
}

/// Calls `visit` with the position of each separator of `p`, from `start` on, that follows
/// another one, in order, until it answers false. `after_one` says whether a separator stands
/// before `start`.
template <class Char, class Visit>
void visit_doubled_separators(std::basic_string_view<Char> p, std::size_t start, bool after_one,
                              Visit visit)
{
    std::uint32_t last = after_one ? 1 : 0;
    for (; start + group_length <= p.size(); start += group_length) {
        std::uint32_t doubled = doubled_in_group(separators_in_group(p.data() + start), last);
        for (; doubled != 0; doubled &= doubled - 1) {
            if (!visit(start + static_cast<std::size_t>(std::countr_zero(doubled)))) {
                return;
            }
        }
    }
    if (start < p.size()) {
        std::uint32_t doubled = doubled_in_group(separators_at_end(p, start), last);
        for (; doubled != 0; doubled &= doubled - 1) {
            if (!visit(start + static_cast<std::size_t>(std::countr_zero(doubled)))) {
                return;
            }
        }
    }
}

/// Where the first separator of `p` is that follows another one, or `npos`.
template <class Char>
std::size_t first_doubled_separator(std::basic_string_view<Char> p)
{
    std::size_t first = std::string_view::npos;
    visit_doubled_separators(p, 0, false, [&](std::size_t at) {
        first = at;
        return false;
    });
    return first;
}

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

} // namespace nura::filesystem::detail::grammar
