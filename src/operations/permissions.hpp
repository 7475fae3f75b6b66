#pragma once

#include <string>

namespace nura::filesystem::detail {

/// Changes the mode of `native` as `perms`, made of `file_status` constants, says.
void native_permissions(std::string const& native, unsigned perms);

} // namespace nura::filesystem::detail
