#pragma once

#include <string>

namespace nura::filesystem::detail {

/// Makes `native` the current directory; true, or throws.
bool set_cwd_mt(std::string const& native);

/// The native name of the current directory.
std::string get_cwd_mt();

} // namespace nura::filesystem::detail
