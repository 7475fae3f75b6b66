#pragma once

#include "report.hpp"

#include <filesystem/file_status.hpp>
#include <filesystem/operations.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace client {

/// "directory", "regular file" and the like; "not found" where nothing is.
[[nodiscard]] std::string type_words(std::uint32_t type);

/// The value for a type that has the name "file" or "directory"; `file_type_auto` for any other.
[[nodiscard]] std::uint32_t type_code(std::string_view name);

/// Nine letters, such as "rwxr-sr-t".
[[nodiscard]] std::string permission_letters(std::uint32_t permissions);

/// Permissions from a text like "644".
/// \throws refusal for any other text
[[nodiscard]] std::uint32_t permission_bits(std::string const& octal);

/// ISO 8601 in UTC to the microsecond; for a time that a calendar cannot hold, a word.
[[nodiscard]] std::string time_words(boost::posix_time::ptime const& time);

/// "1 byte", "2 bytes".
[[nodiscard]] std::string counted(std::uint64_t count, std::string_view noun);

/// Everything that a status holds; only the type where nothing is.
[[nodiscard]] result status_result(nura::filesystem::file_status const& status);
[[nodiscard]] result status_result(nura::filesystem::light_file_status const& status);

/// The bytes of a file system.
[[nodiscard]] result space_result(nura::filesystem::space_info const& space);

} // namespace client
