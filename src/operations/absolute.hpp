#pragma once

#include <string>

namespace nura::filesystem::detail {

/// `native` behind `base`, or behind the current directory if `base` is empty; all native names.
std::string native_absolute(std::string const& native, std::string const& base);

} // namespace nura::filesystem::detail
