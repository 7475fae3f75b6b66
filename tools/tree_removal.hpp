#pragma once

#include <string>

namespace client {

/// Removes `p` with all that is in it; where `ask` is set, after the user has agreed.
///
/// \throws refusal if `p` is, holds or leads to the root or the home directory, if there is no
///         terminal to ask on, or if the user does not agree
/// \throws what the library throws
void remove_tree(std::u16string const& p, bool ask);

} // namespace client
