#pragma once

#include "report.hpp"

#include <string>

namespace client {

/// What the library makes of the pathname `given`: its forms and parts by the rules of `path`
/// and of the function for each single part, and what stands at each step of the way to it.
[[nodiscard]] result explain(std::u16string const& given);

} // namespace client
