#pragma once

#include <string>

namespace client {

/// Prints a script that teaches `shell`, "bash" or "fish", to complete the command line.
/// \throws refusal for any other shell
void print_completion(std::string const& shell);

} // namespace client
