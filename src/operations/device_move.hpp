#pragma once

#include <string>

namespace nura::filesystem::detail {

/// Moves `from` to `to`, native names on different file systems: copies it with all that is in
/// it, and removes it once the copy is complete. Until then the source is whole.
void move_across_devices(std::string const& from, std::string const& to,
                         bool preserve_last_write_time);

} // namespace nura::filesystem::detail
