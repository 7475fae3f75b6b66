#pragma once

#include <string>

namespace nura::filesystem::detail {

/// Whether `mode`, made of the `access_` bits, is granted for `native`.
bool native_access(std::string const& native, unsigned mode);

} // namespace nura::filesystem::detail
