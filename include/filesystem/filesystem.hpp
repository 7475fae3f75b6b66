#pragma once

/// \file
/// Everything public, but for the opt-in `format.hpp`.

#include "basic_path.hpp"       // IWYU pragma: export
#include "describe.hpp"         // IWYU pragma: export
#include "exceptions.hpp"       // IWYU pragma: export
#include "export.hpp"           // IWYU pragma: export
#include "file_status.hpp"      // IWYU pragma: export
#include "operations.hpp"       // IWYU pragma: export
#include "path_traits.hpp"      // IWYU pragma: export
#include "pathname_grammar.hpp" // IWYU pragma: export
#include "pathname_traits.hpp"  // IWYU pragma: export
