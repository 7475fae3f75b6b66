#pragma once

#include <string>

namespace nura::filesystem::detail {

/// Removes what `native` names: a directory with all that is in it, anything else by itself.
void remove_tree(std::string const& native);

} // namespace nura::filesystem::detail
