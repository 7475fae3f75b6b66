#include "native/standard_path.hpp"

#include <array>
#include <cwchar>
#include <locale>
#include <stdexcept>
#include <string>

namespace nura::filesystem::detail {

namespace {

/// The facet that converts between UTF-16 and UTF-8, with the public destructor that it lacks.
struct utf8_facet final : std::codecvt<char16_t, char, std::mbstate_t> {};

} // namespace

std::filesystem::path to_standard_path(std::u16string_view pathname)
{
    utf8_facet const facet;
    std::mbstate_t state{};
    std::string native;
    std::array<char, 512> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): output only
    char16_t const* from = pathname.data();
    char16_t const* const end = from + pathname.size();
    while (from != end) {
        char16_t const* next = from;
        char* written = chunk.data();
        auto const outcome =
            facet.out(state, from, end, next, chunk.data(), chunk.data() + chunk.size(), written);
        // For a name that ends in a high surrogate the facet answers "ok" and leaves it over:
        // without progress the name would be cut silently.
        if (outcome == std::codecvt_base::error || next == from) {
            throw std::runtime_error{"locale not supported"};
        }
        native.append(chunk.data(), written);
        from = next;
    }
    return std::filesystem::path{std::move(native)};
}

} // namespace nura::filesystem::detail
