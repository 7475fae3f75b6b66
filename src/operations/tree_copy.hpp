#pragma once

#include <filesystem>
#include <system_error>

namespace nura::filesystem::detail {

/// `std::filesystem::copy` in its form that does not throw, made true: libstdc++ lets an error
/// that a directory answers in the middle of being read escape as an exception.
inline std::error_code copy_tree(std::filesystem::path const& from, std::filesystem::path const& to,
                                 std::filesystem::copy_options options)
{
    std::error_code error;
    try {
        std::filesystem::copy(from, to, options, error);
    } catch (std::filesystem::filesystem_error const& failure) {
        error = failure.code();
    }
    return error;
}

} // namespace nura::filesystem::detail
